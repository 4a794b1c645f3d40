/* vesk-bench-subject: one of the two programs that are compared. The driver starts it with "module" or "bare" and a
   number of devices; it shows the list, tells when the first frame with rows was done, and then carries out one command
   after the other from its standard input. Each answer is one line of JSON on the standard output. */

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "clock.h"
#include "desktop/device_service.h"
#include "frames.h"
#include "household.h"
#include "list_on_panel.h"
#include "screen.h"

namespace bench {

namespace {

using nlohmann::json;

constexpr int64_t kKeyIntervalNs = 1'000'000'000 / 30; /* a held key of the remote: 30 presses a second */
constexpr int kAfterglowMs = 1000; /* what an opening leaves to do later belongs to it, not to idleness */
constexpr int kLostKeyMs = 500;    /* a key without a visible consequence for so long is lost */

/* The driver's commands, which arrive while the main loop runs; without one the program sleeps in it. */
class Commands {
public:
    Commands() : input_(ecore_main_fd_handler_add(STDIN_FILENO, ECORE_FD_READ, receive, this, nullptr, nullptr)) {}
    ~Commands() { ecore_main_fd_handler_del(input_); }
    Commands(const Commands &) = delete;
    Commands &operator=(const Commands &) = delete;

    /* The next command; empty when the driver has gone. */
    std::string next(const vesk::Toolkit &toolkit)
    {
        toolkit.run_until([this] { return ended_ || received_.find('\n') != received_.npos; });
        const auto end = received_.find('\n');
        if (end == received_.npos)
            return {};
        const std::string command = received_.substr(0, end);
        received_.erase(0, end + 1);
        return command;
    }

private:
    static Eina_Bool receive(void *commands, Ecore_Fd_Handler *)
    {
        auto *self = static_cast<Commands *>(commands);
        char text[256];
        const ssize_t length = read(STDIN_FILENO, text, sizeof text);
        if (length > 0)
            self->received_.append(text, static_cast<size_t>(length));
        else
            self->ended_ = true;
        return self->ended_ ? ECORE_CALLBACK_CANCEL : ECORE_CALLBACK_RENEW;
    }

    Ecore_Fd_Handler *input_;
    std::string received_;
    bool ended_ = false;
};

void answer(const json &message)
{
    std::cout << message.dump() << std::endl;
}

class Subject {
public:
    Subject(bool module, int devices)
        : toolkit_({}), panel_(toolkit_), frames_(panel_), devices_(devices),
          screen_(module ? module_screen(panel_) : bare_screen(panel_, devices))
    {
    }

    void run()
    {
        show();
        answer({{"first_frame", first_frame_}});
        Commands commands;
        for (;;) {
            const std::string command = commands.next(toolkit_);
            if (command.empty() || command == "quit")
                break;
            answer(carry_out(command));
        }
        screen_->close();
    }

private:
    json carry_out(const std::string &command)
    {
        if (command == "settle")
            return settle();
        if (command == "build")
            return build();
        if (command == "idle")
            return begin_idle();
        if (command == "turns")
            return {{"turns", turns_ - 1}}; /* the last one brought the command */
        if (command == "refresh")
            return refresh();
        if (command == "change")
            return watch_change();
        if (command == "import")
            return watch_import();
        if (command == "key")
            return key();
        if (command == "scroll")
            return scroll();
        if (command.starts_with("picture "))
            return picture(command.substr(sizeof "picture"));
        throw std::runtime_error("\"" + command + "\" is no command");
    }

    void show()
    {
        screen_->open();
        first_frame_ = wait_for_rows();
    }

    int64_t wait_for_rows()
    {
        return frames_.wait_for("the rows", [this] { return shows_rows(devices_); });
    }

    void come_to_rest()
    {
        if (!panel_.settle())
            throw std::runtime_error("the panel does not come to rest");
    }

    /* Milliseconds from the first frame with rows to the last frame that the opening takes. */
    json settle()
    {
        come_to_rest();
        return {{"ms", ms(frames_.last() - first_frame_)}};
    }

    json build()
    {
        screen_->close();
        come_to_rest();
        show();
        const double duration = ms(first_frame_ - screen_->build_began());
        come_to_rest();
        return {{"ms", duration}};
    }

    json begin_idle()
    {
        if (!turn_counter_) {
            turn_counter_ = ecore_idle_exiter_add(
                [](void *turns) -> Eina_Bool {
                    ++*static_cast<int64_t *>(turns);
                    return ECORE_CALLBACK_RENEW;
                },
                &turns_);
        }
        come_to_rest();
        panel_.run_until([] { return false; }, kAfterglowMs);
        turns_ = 0;
        return json::object();
    }

    json refresh()
    {
        const int64_t begun = now();
        screen_->refresh();
        const double calls = ms(now() - begun);
        const double duration = ms(wait_for_rows() - begun);
        come_to_rest();
        return {{"calls_ms", calls}, {"ms", duration}};
    }

    /* Answers twice: when another process may make its change, and when the changed row has been drawn. */
    json watch_change()
    {
        come_to_rest();
        const std::string before = status_shown(kChangingRow);
        if (before.empty())
            throw std::runtime_error("the row that will change is not drawn");
        answer(json::object());
        const int64_t frame = frames_.wait_for("the changed row", [&] {
            const std::string status = status_shown(kChangingRow);
            return !status.empty() && status != before;
        });
        return {{"frame", frame}};
    }

    /* Answers twice: when another process may register more devices than are listed, and when the list is drawn. */
    json watch_import()
    {
        come_to_rest();
        answer(json::object());
        devices_ = static_cast<int>(vesk_port::kListedDevices);
        return {{"frame", wait_for_rows()}};
    }

    json key()
    {
        if (focused_row() == devices_ - 1)
            build();
        const int next = focused_row() + 1;
        const int64_t begun = now();
        screen_->press_down();
        const double duration = ms(frames_.wait_for("the pressed key", [&] { return focused_row() == next; }) - begun);
        come_to_rest();
        return {{"ms", duration}};
    }

    /* From the first row to the last with a held key: how many keys were lost, and how long after it was due the
       slowest was seen. A key that is due while the one before it is being drawn waits for that frame. */
    json scroll()
    {
        build();
        int lost = 0;
        int64_t slowest = 0;
        const int64_t start = now();
        for (int key = 1; key < devices_; ++key) {
            const int64_t due = start + key * kKeyIntervalNs;
            if (const int64_t wait = due - now(); wait > 0)
                panel_.run_until([due] { return now() >= due; }, static_cast<int>(wait / 1'000'000) + 1);
            screen_->press_down();
            const auto frame = frames_.frame_with([&] { return focused_row() == key - lost; }, kLostKeyMs);
            if (frame)
                slowest = std::max(slowest, *frame - due);
            else
                ++lost;
        }
        come_to_rest();
        return {{"lost", lost}, {"slowest_ms", ms(slowest)}};
    }

    json picture(const std::string &file)
    {
        panel_.save(file);
        return json::object();
    }

    vesk::Toolkit toolkit_;
    vesk::Panel panel_;
    Frames frames_;
    int devices_;
    std::unique_ptr<Screen> screen_;
    int64_t first_frame_ = 0;
    Ecore_Idle_Exiter *turn_counter_ = nullptr;
    int64_t turns_ = 0;
};

} // namespace

} // namespace bench

int main(int argc, char **argv)
{
    const std::string kind = argc == 3 ? argv[1] : "";
    if (kind != "module" && kind != "bare") {
        std::fprintf(stderr, "vesk-bench-subject: is started by vesk-bench, as \"module COUNT\" or \"bare COUNT\".\n");
        return 2;
    }
    bench::Subject subject(kind == "module", std::atoi(argv[2]));
    try {
        subject.run();
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vesk-bench-subject (%s): %s\n", kind.c_str(), error.what());
        std::_Exit(1); /* what keeps a screen from being drawn may keep it from being taken down */
    }
}

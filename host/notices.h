#pragma once
/* What has failed, with what to do about it, for as long as it fails: one sentence about each thing. */

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vesk {

class Notices {
public:
    /* The last sentence about a thing holds. Returns whether it is news. */
    bool put_up(const std::string &about, const std::string &sentence);
    void take_back(const std::string &about);
    bool has(const std::string &about) const;

    /* The newest, and how many there are besides; empty when nothing fails. */
    std::string line() const;

    /* Called after each change, until it is replaced. */
    void on_change(std::function<void()> handler) { handler_ = std::move(handler); }

private:
    void changed() const;

    std::vector<std::pair<std::string, std::string>> sentences_; /* with what each is about; the newest is the last */
    std::function<void()> handler_;
};

/* Reads the port's log lines for what concerns the registered devices. */
class StoreNotices {
public:
    explicit StoreNotices(Notices &notices) : notices_(notices) {}

    void log_line(const std::string &text);

    /* A key or a touch has come: the refusal of a change has been seen. */
    void input_came();

    /* Whether the devices could not be read, and cannot yet, since the last key or touch: a module that closes then
       does so for want of devices, and not by its user's wish. */
    bool failed_since_input() const;

private:
    Notices &notices_;
    bool closed_ = false; /* the service did not open, and a module asks for that once only */
    bool failed_since_input_ = false;
};

} // namespace vesk

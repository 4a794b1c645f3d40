#pragma once
/* What the tests of vesk-host share. */

#include <functional>
#include <glib.h>

#include "port_fixture.h"

class HostTest : public PortTest {
protected:
    HostTest();
    ~HostTest() override;

    /* Runs the host off-screen with still pictures until it ends; it writes picture_ unless the arguments name
       another file. */
    ProcessResult run(std::vector<std::string> arguments);

    /* Runs the host with these arguments alone until it ends. */
    ProcessResult run_as_given(const std::vector<std::string> &arguments);

    /* Like run(), with keys: "Down Return". */
    ProcessResult play(const std::string &keys, std::vector<std::string> arguments = {});

    /* Starts the host and waits until its screen is up and the keys have been pressed; it stays for a minute. */
    void start(const std::string &keys = "", std::vector<std::string> arguments = {});

    /* Starts the host on the display that the environment names. */
    void start_in_window(std::vector<std::string> arguments);

    /* Waits for what another process makes come true, which no event of this one tells. */
    static bool wait_until(const std::function<bool()> &condition);

    /* Waits for the end of the started host. */
    ProcessResult finish();

    /* Waits until a line of the host's log contains `text`. */
    testing::AssertionResult logged(const std::string &text);

    /* The same for its standard output. */
    testing::AssertionResult printed(const std::string &text);

    std::string host_log() const { return contents_of(folder_ / "host.log"); }

    /* Status of a device of the sample household, by its name: "allow" or "deny"; empty when it is not there. */
    static std::string status_of(const std::string &name);

    GPid pid() const { return pid_; }

    const std::filesystem::path picture_ = folder_ / "panel.png";

private:
    void spawn(std::vector<std::string> arguments);
    testing::AssertionResult written(const char *file, const std::string &text);

    GPid pid_ = 0;
};

/* Width and height of a PNG; 0 x 0 when it is none. */
std::pair<unsigned, unsigned> size_of_png(const std::filesystem::path &file);

#pragma once
/* The one kind of error inside the desktop port: a code for the module and a sentence for the user. */

#include <stdexcept>
#include <string>

namespace vesk_port {

class PortError : public std::runtime_error {
public:
    /* `code` is a negative errno; `sentence` names the file or the input and tells what to do. */
    PortError(int code, const std::string &sentence) : std::runtime_error(sentence), code_(code) {}

    int code() const { return code_; }

private:
    int code_;
};

/* The same error met again, which the log or the user has been told already. */
class RepeatedError : public PortError {
public:
    explicit RepeatedError(const PortError &error) : PortError(error) {}
};

} // namespace vesk_port

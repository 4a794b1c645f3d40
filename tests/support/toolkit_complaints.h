#pragma once
/* What the toolkit complains about, such as a call on an object that is gone. */

#include <Eina.h>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

/* Keeps the toolkit's messages of level error and worse while it lives; the toolkit has to be up. Afterwards they go
 * nowhere, which is what the panel of the tests does with them too. */
class ToolkitComplaints {
public:
    ToolkitComplaints() { eina_log_print_cb_set(keep, &texts_); }
    ~ToolkitComplaints() { eina_log_print_cb_set(drop, nullptr); }
    ToolkitComplaints(const ToolkitComplaints &) = delete;
    ToolkitComplaints &operator=(const ToolkitComplaints &) = delete;

    const std::vector<std::string> &texts() const { return texts_; }

private:
    __attribute__((format(printf, 6, 0))) static void keep(const Eina_Log_Domain *, Eina_Log_Level level, const char *,
                                                           const char *function, int, const char *format, void *texts,
                                                           va_list arguments)
    {
        if (level > EINA_LOG_LEVEL_ERR)
            return;
        char text[512];
        vsnprintf(text, sizeof text, format, arguments);
        static_cast<std::vector<std::string> *>(texts)->push_back(std::string(function) + ": " + text);
    }

    static void drop(const Eina_Log_Domain *, Eina_Log_Level, const char *, const char *, int, const char *, void *,
                     va_list)
    {
    }

    std::vector<std::string> texts_;
};

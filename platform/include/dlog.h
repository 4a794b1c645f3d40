#pragma once
/* Platform log. */

#ifdef __cplusplus
extern "C" {
#endif

/* Buffers of the log. */
enum { LOG_ID_MAIN = 0 };

/* Priorities, rising with urgency. */
enum { DLOG_INFO = 4, DLOG_WARN = 5, DLOG_ERROR = 6 };

/* Writes one line, formatted like printf, under `tag` to the buffer `log_id`. The log adds time and line end.
 * Returns the number of bytes written, or a negative number when the line was not written. */
int __dlog_print(int log_id, int priority, const char *tag, const char *format, ...)
    __attribute__((format(printf, 4, 5)));

#ifdef __cplusplus
}
#endif

#pragma once
/* System information: facts of the product that do not change while it runs.
 *
 * A result of 0 is success; a negative number is the error code, and the output is left alone then. Keys are texts
 * such as "com.corvane/feature/screen.width"; "custom" keys are the maker's, "platform" keys every product has. */

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

/* Stores the maker's boolean `key` in `*value`. Fails when the product does not state it. */
int system_info_get_custom_bool(const char *key, bool *value);

/* Stores the maker's integer `key` in `*value`. Fails when the product does not state it. */
int system_info_get_custom_int(const char *key, int *value);

/* Stores a copy of the maker's text `key` in `*value`; the caller frees it with free. */
int system_info_get_custom_string(const char *key, char **value);

/* Stores the platform's integer `key` in `*value`, such as the panel's width in pixels
 * ("com.corvane/feature/screen.width") and height ("com.corvane/feature/screen.height"). */
int system_info_get_platform_int(const char *key, int *value);

/* Stores a copy of the text with the numeric code `key` in `*value`; the caller frees it with free. Code 90 is the
 * text that tells the sales region. */
int system_info_get_value_string(int key, char **value);

#ifdef __cplusplus
}
#endif

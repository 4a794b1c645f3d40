#pragma once
/* Settings store: the television's settings as keys with a value, and the news of their changes.
 *
 * Every call belongs to the main-loop thread. A result of 0 is success, a negative number a failure. */

#ifdef __cplusplus
extern "C" {
#endif

/* One key with its value, as a change callback sees it; it belongs to the store. */
typedef struct keynode keynode_t;

/* Reports on the main loop that the watched key has changed; read the new value with the calls below. */
typedef void (*vconf_callback_fn)(keynode_t *node, void *user_data);

/* Stores the integer of `key` in `*value`. Fails when the key is unset or holds no integer; `*value` is left alone
 * then. */
int vconf_get_int(const char *key, int *value);

/* Returns the text of `key`, which the caller frees with free, or null when it is unset or unreadable. */
char *vconf_get_str(const char *key);

/* Calls `callback` with `user_data` after every change of `key`. A callback is registered once for a key; doing it
 * again is a failure. */
int vconf_notify_key_changed(const char *key, vconf_callback_fn callback, void *user_data);

/* Ends a watch. Fails when this callback does not watch this key. */
int vconf_ignore_key_changed(const char *key, vconf_callback_fn callback);

#ifdef __cplusplus
}
#endif

#pragma once
/* Text helpers that know nothing of devices or screens. */

/* Places `word` at the first argument marker of the translated `format`. Returns a new text of at most 511 bytes that
 * the caller frees with free, or null when there is no memory. */
char *combinate_string(const char *format, const char *word);

/* True when `text` begins with `prefix`; the empty prefix begins every text. */
bool StartsWith(const char *prefix, const char *text);

#pragma once
/* The module's message catalogue. */

constexpr const char *kTextDomain = "ug-VeskUG-efl";

/* Returns the text of the string id in the user's language, or the id itself when the catalogue has none. The
 * catalogue owns the text; it stays valid while the module is loaded. */
const char *translated(const char *id) __attribute__((format_arg(1)));

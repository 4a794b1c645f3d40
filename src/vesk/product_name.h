#pragma once
/* The word for the television itself, which depends on the kind of display it is. */

/* Returns the word in the user's language as a new text that the caller frees with free. Facts that cannot be read
 * are logged and count as absent, so there is always a text. */
char *get_product_name();

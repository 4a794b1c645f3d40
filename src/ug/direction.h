#pragma once
/* The direction in which the menu language is written. */

/* The layout runs right to left. Set when an action drop-down opens in such a language and never cleared while the
 * module is loaded, so the first screen is built left to right in any language; the other screens follow that order. */
extern bool gbReverse;

/* Sets gbReverse when the menu language is written right to left. */
void IsReveseOSD();

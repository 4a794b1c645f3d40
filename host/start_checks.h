#pragma once
/* What the toolkit takes for granted and ends the process without. */

namespace vesk {

/* Makes sure of a home folder and of enough file descriptors. An empty HOME becomes the one of the account. Throws an
   exception with a sentence for the user. */
void check_start();

} // namespace vesk

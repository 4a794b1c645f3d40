#pragma once
/* The end of the program on SIGINT, SIGTERM or SIGHUP. */

namespace vesk {

/* From now on each of these signals sets `ended` from the main loop, in place of the toolkit, which would let its loop
   spin from then on. When the program is still there 2.5 s after one, it ends all the same, with the exit code 128 +
   signal and a sentence: a module may never return to the loop. To be called once, when the toolkit has started;
   `ended` has to last as long as the loop. Throws std::runtime_error when the signals cannot be heard. */
void end_on_signals(bool &ended);

} // namespace vesk

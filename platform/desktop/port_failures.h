#pragma once
/* Failures on demand, for tests and for the curious: a list such as "rdm_get_list=-5,vconf_get_int=-1@3", where a
 * call answers with the code each time, or, with "@n", from its n-th call on (counted from 1). */

#include <string>

namespace vesk_port {

/* Replaces the failures in force and starts counting anew. Throws PortError when the text names an unknown call or is
 * malformed, and changes nothing then. Without this call VESK_FAIL is read when the first call comes; a malformed
 * variable is then ignored with a line in the log. */
void set_failures(const std::string &text);

/* Ends all provoked failures, those of VESK_FAIL as well. */
void clear_failures();

/* Counts one use of `call`. Returns the code it has to fail with, or 0. */
int provoked_failure(const char *call);

} // namespace vesk_port

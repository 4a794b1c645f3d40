#pragma once
/* What a program writes for its user must not be lost in silence. */

namespace vesk_port {

/* From now on the program ends with exit code 1, and says so on the standard error stream, when what it wrote to its
 * standard output could not be written whole. To be called once, first in main(); `program` has to last. */
void check_output_at_exit(const char *program);

} // namespace vesk_port

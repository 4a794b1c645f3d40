#pragma once
/* The state of the module as a whole. */

/* Brings all state of the module back to what it is right after loading. For programs that run the module several times
 * without unloading it. */
void reset_module_state();

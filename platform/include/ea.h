#pragma once
/* Application utility library: life cycle. */

#ifdef __cplusplus
extern "C" {
#endif

/* Starts the library for this process; both arguments are reserved and 0. Calls nest. Returns the number of users. */
int ea_init(int, int);

/* Ends one use of the library. Returns the number of users that are left. */
int ea_shutdown(void);

#ifdef __cplusplus
}
#endif

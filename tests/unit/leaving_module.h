#pragma once
/* A module that leaves a watch on a setting behind: leave_a_watch counts the watch's calls in `calls`. */

using LeaveAWatch = int (*)(const char *key, int *calls);

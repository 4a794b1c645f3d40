#pragma once

namespace vesk {

/* Does nothing; whoever calls it has the functions of interpose.cpp linked in, which a static library would drop. */
void stand_before_toolkit();

} // namespace vesk

#pragma once
/* Texts on their way from the module to the theme. */

#include <string>

namespace vesk::efl {

/* Does nothing; whoever calls it has the functions of texts.cpp linked in. */
void begin_texts();

/* A device's name as a row shows it: as typed, without what would turn its neighbours round, and never invisible. */
std::string shown_name(const std::string &name);

} // namespace vesk::efl

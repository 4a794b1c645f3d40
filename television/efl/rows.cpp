/* Rows that a key leads to. The toolkit scrolls to a row and makes what it shows with the next frame; until then the
   row has no area, and a module that opens something beside it on the next key opens it in the panel's corner. To see
   it: xdotool key --delay 0 Down Down Down Down Down Down Down Down Return. */

#include "television/efl/rows.h"

namespace vesk::efl {

void place_rows(Evas *canvas)
{
    evas_smart_objects_calculate(canvas);
}

} // namespace vesk::efl

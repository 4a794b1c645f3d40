/* What is drawn anew. Off-screen canvases, and the panel is one on a display too, are drawn whole for each change of
   one pixel, unless the toolkit is told that their buffers are swapped: then it draws what changed since the frame
   before the last. So they are told so, and the swap hands out the same buffer again. To see it: the time from a key to
   its frame (make bench), or the updated areas of EVAS_CALLBACK_RENDER_POST. */

#include "television/efl/redraw.h"

#include <Evas_Engine_Buffer.h>

namespace vesk::efl {

void draw_changes_only(Evas *canvas)
{
    auto *info = reinterpret_cast<Evas_Engine_Info_Buffer *>(evas_engine_info_get(canvas));
    info->info.func.switch_buffer = [](void *, void *buffer) { return buffer; };
    evas_engine_info_set(canvas, reinterpret_cast<Evas_Engine_Info *>(info));
}

} // namespace vesk::efl

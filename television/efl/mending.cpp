#include "television/efl/mending.h"

#include "television/efl/contrast.h"
#include "television/efl/focus.h"
#include "television/efl/places.h"
#include "television/efl/sizes.h"
#include "television/efl/texts.h"
#include "television/reader/reader.h"

namespace vesk::efl {

namespace {

Evas_Object *mended_window = nullptr;
Ecore_Idle_Enterer *watch = nullptr;

} // namespace

void begin(Evas_Object *window)
{
    mended_window = window;
    watch = ecore_idle_enterer_before_add(
        [](void *) -> Eina_Bool {
            scale_lists_once();
            fit_popups();
            const bool rests = keep_focus();
            show_focus();
            if (rests)
                reader::focus_rests(mended_window);
            keep_on_panel();
            return ECORE_CALLBACK_RENEW;
        },
        nullptr);
    begin_contrast();
    begin_texts();
}

void end()
{
    end_contrast();
    ecore_idle_enterer_del(watch);
    watch = nullptr;
    mended_window = nullptr;
}

Evas_Object *window()
{
    return mended_window;
}

} // namespace vesk::efl

#include "ug/app_data.h"

AppData *app_data;
bool b_sound_mirroring, b_is_tablo;
int gVeskHandler = -1;

void delete_object(Evas_Object *&object)
{
    if (!object)
        return;
    evas_object_del(object);
    object = nullptr;
}

void remove_popup(Evas_Object *&popup)
{
    evas_object_hide(popup);
    delete_object(popup);
}

/* The same widgets by plain calls of the toolkit: no module, no service, no log, no catalogue. Keys go straight to the
   toolkit, which moves the focus by itself. */

#include <cstring>
#include <string>
#include <vector>

#include "clock.h"
#include "desktop/paths.h"
#include "household.h"
#include "screen.h"

namespace bench {

namespace {

struct Row {
    std::string name;
    std::string status;
    std::string picture; /* a path */
};

char *text_of(void *data, Evas_Object *, const char *part)
{
    const auto *row = static_cast<const Row *>(data);
    if (std::strcmp(part, "elm.text") == 0)
        return strdup(row->name.c_str());
    if (std::strcmp(part, "elm.text.1") == 0)
        return strdup(row->status.c_str());
    return nullptr;
}

Evas_Object *content_of(void *data, Evas_Object *list, const char *part)
{
    if (std::strcmp(part, "elm.swallow.icon") != 0)
        return nullptr;
    auto *icon = elm_icon_add(list);
    elm_image_file_set(icon, static_cast<const Row *>(data)->picture.c_str(), nullptr);
    return icon;
}

void show_icon_and_texts(void *, Evas_Object *, void *item)
{
    elm_object_item_signal_emit(static_cast<Elm_Object_Item *>(item), "theme,singleline,icon,2text", "");
}

void expand_and_fill(Evas_Object *object)
{
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    evas_object_size_hint_align_set(object, EVAS_HINT_FILL, EVAS_HINT_FILL);
}

class BareScreen : public Screen {
public:
    BareScreen(vesk::Panel &panel, int devices) : panel_(panel)
    {
        const auto pictures = vesk_port::share_folder() / "pictures" / "r_icon_convergence";
        for (const auto &device : household(devices)) {
            rows_.push_back({"&#x200e;" + device.name + "&#x200e;", device.status == 0 ? "Allowed" : "Denied",
                             pictures / picture_of(device)});
        }
    }

    void open() override
    {
        began_ = now();
        elm_config_focus_highlight_enabled_set(EINA_TRUE);
        elm_app_base_scale_set(2.0);
        popup_ = elm_popup_add(panel_.window());
        elm_popup_orient_set(popup_, ELM_POPUP_ORIENT_CENTER);
        elm_object_style_set(popup_, "C_PopupBasic_WhiteRight");
        elm_object_part_text_set(popup_, "title,text", "Device list");
        list_ = elm_genlist_add(popup_);
        evas_object_smart_callback_add(list_, "realized", show_icon_and_texts, nullptr);
        add_button("button2", "Close");
        add_button("button1", "Edit");
        append_rows();
        elm_object_content_set(popup_, sized(list_));
        elm_object_focus_set(list_, EINA_TRUE);
        evas_object_show(popup_);
        panel_.take_keys(true);
    }

    void close() override
    {
        panel_.take_keys(false);
        evas_object_del(popup_);
        panel_.settle();
    }

    int64_t build_began() const override { return began_; }

    void refresh() override
    {
        elm_genlist_clear(list_);
        append_rows();
    }

    void press_down() override
    {
        const auto time = static_cast<unsigned int>(now() / 1'000'000);
        evas_event_feed_key_down(panel_.canvas(), "Down", "Down", nullptr, nullptr, time, nullptr);
        evas_event_feed_key_up(panel_.canvas(), "Down", "Down", nullptr, nullptr, time, nullptr);
    }

private:
    void add_button(const char *part, const char *text)
    {
        auto *button = elm_button_add(popup_);
        elm_object_style_set(button, "C_ButtonBasic_WhiteText");
        elm_object_text_set(button, text);
        elm_object_part_content_set(popup_, part, button);
    }

    void append_rows()
    {
        auto *row_class = elm_genlist_item_class_new();
        row_class->item_style = "C_TextItem_WhiteSingleline05";
        row_class->func.text_get = text_of;
        row_class->func.content_get = content_of;
        for (Row &row : rows_)
            elm_genlist_item_append(list_, row_class, &row, nullptr, ELM_GENLIST_ITEM_NONE, nullptr, nullptr);
        elm_genlist_item_class_free(row_class);
        elm_object_item_focus_set(elm_genlist_first_item_get(list_), EINA_TRUE);
        evas_object_show(list_);
    }

    /* The list in a table that gives it its size: without one a list in a popup has none. */
    Evas_Object *sized(Evas_Object *list)
    {
        auto *table = elm_table_add(popup_);
        auto *size = evas_object_rectangle_add(evas_object_evas_get(table));
        evas_object_size_hint_min_set(size, 820, 491);
        evas_object_color_set(size, 0, 0, 0, 10);
        expand_and_fill(size);
        elm_table_pack(table, size, 0, 0, 1, 1);
        evas_object_show(size);
        expand_and_fill(list);
        elm_table_pack(table, list, 0, 0, 1, 1);
        evas_object_size_hint_weight_set(table, 0.0, EVAS_HINT_EXPAND);
        evas_object_size_hint_align_set(table, EVAS_HINT_FILL, EVAS_HINT_FILL);
        evas_object_show(table);
        return table;
    }

    vesk::Panel &panel_;
    std::vector<Row> rows_;
    Evas_Object *popup_ = nullptr;
    Evas_Object *list_ = nullptr;
    int64_t began_ = 0;
};

} // namespace

std::unique_ptr<Screen> bare_screen(vesk::Panel &panel, int devices)
{
    return std::make_unique<BareScreen>(panel, devices);
}

} // namespace bench

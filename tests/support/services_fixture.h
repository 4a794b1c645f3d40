#pragma once
/* What the tests of the services in the detail popup share: the rows as they are shown, and what the list asks for. */

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "details.h"
#include "spy.h"
#include "ug/detail_popup.h"

inline constexpr const char *kConnect = "r_icon_service_s_corvaneconnect_w.webp";
inline constexpr const char *kMirroring = "r_icon_service_s_castelo_w.webp";
inline constexpr const char *kContent = "r_icon_service_s_pct_w.webp";
inline constexpr const char *kSound = "r_icon_service_s_sound_w.webp";

/* What the list has asked its getters, in order: "text" or "picture", and the part. */
inline std::vector<std::string> requests;

inline char *noted_text(void *data, Evas_Object *list, const char *part)
{
    requests.push_back("text " + std::string(part));
    return _service_item_label_get(data, list, part);
}

inline Evas_Object *noted_picture(void *data, Evas_Object *list, const char *part)
{
    requests.push_back("picture " + std::string(part));
    return _service_item_content_get(data, list, part);
}

inline void note_requests(Elm_Genlist_Item_Class &row_class)
{
    if (row_class.func.text_get != _service_item_label_get)
        return;
    row_class.func.text_get = noted_text;
    row_class.func.content_get = noted_picture;
}

struct ServiceRow {
    std::string text;
    std::string picture;
    bool operator==(const ServiceRow &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const ServiceRow &row)
{
    return out << '"' << row.text << "\" " << row.picture;
}

inline std::string sound_text(int type, bool mirroring)
{
    return std::string(mirroring ? "Sound mirroring / " : "") +
           (type == 1 ? "Play TV sound on the phone" : "Play TV sound on the tablet");
}

struct ServicesTest : DetailsTest {
    ServicesTest()
    {
        requests.clear();
        spy::overrides().on_append = note_requests;
    }

    std::vector<ServiceRow> shown()
    {
        const auto texts = service_texts();
        const auto pictures = service_pictures();
        std::vector<ServiceRow> rows;
        for (size_t i = 0; i < texts.size(); ++i)
            rows.push_back({texts[i], pictures[i]});
        return rows;
    }

    /* Without the way through the drop-down. */
    std::vector<ServiceRow> look_at(int index)
    {
        selected_item_index = index;
        show_detail_popup(app());
        panel().settle();
        const auto rows = shown();
        _close_button_cb(app(), nullptr, nullptr);
        panel().settle();
        return rows;
    }

    static unsigned int mask_of(int index) { return vesk_get_service(&gVeskTable[index]); }
};

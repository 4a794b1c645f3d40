#include "list_on_panel.h"

#include <algorithm>

#include "television/efl/mending.h"

namespace bench {

namespace {

constexpr int kRowsThatFit = 6;

} // namespace

Evas_Object *list_on_panel()
{
    const auto lists = vesk::efl::Mending::current()->widgets.lists();
    const auto filled = std::find_if(lists.rbegin(), lists.rend(), elm_genlist_items_count);
    return filled != lists.rend() ? *filled : nullptr;
}

bool shows_rows(int count)
{
    auto *list = list_on_panel();
    if (!list || static_cast<int>(elm_genlist_items_count(list)) != count)
        return false;
    Eina_List *rows = elm_genlist_realized_items_get(list);
    const auto drawn = static_cast<int>(eina_list_count(rows));
    eina_list_free(rows);
    return drawn >= std::min(count, kRowsThatFit);
}

std::string status_shown(int row)
{
    auto *list = list_on_panel();
    auto *item = list ? elm_genlist_nth_item_get(list, static_cast<unsigned int>(row)) : nullptr;
    const char *text = item ? elm_object_item_part_text_get(item, "elm.text.1") : nullptr;
    return text ? text : "";
}

int focused_row()
{
    auto *list = list_on_panel();
    auto *row = list ? elm_object_focused_item_get(list) : nullptr;
    return row ? elm_genlist_item_index_get(row) - 1 : -1;
}

} // namespace bench

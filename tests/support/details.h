#pragma once
/* What the tests around the detail popup share: the way to a device's details by the remote control, and what their
 * rows show. */

#include <string>
#include <vector>

#include "screen_test.h"
#include "ug/action_popup.h"
#include "ug/service_list.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"

struct DetailsTest : ScreenTest {
    /* A device with the links of a service mask. */
    static vesk_port::Device with_services(const std::string &name, unsigned int mask, int type = 1)
    {
        std::string links;
        if (mask & kServiceWifi)
            links += 'w';
        if (mask & kServiceP2p)
            links += 'p';
        if (mask & kServiceBluetooth)
            links += 'b';
        return device(name, type, true, links);
    }

    /* Opens the module with no services left over from another test's opening. */
    void open()
    {
        ScreenTest::open();
        forget_services();
        forget();
    }

    static int row_of(const std::string &name)
    {
        for (int i = 0; i < device_count; ++i) {
            if (name == gVeskTable[i].name)
                return i;
        }
        ADD_FAILURE() << name << " is not in the table";
        return 0;
    }

    /* As a user does: to the row, the drop-down, its last choice. */
    void open_dropdown(int index)
    {
        ScreenTest::open_dropdown(index);
        require(focused() == app()->action_genlist, "the drop-down has not the focus");
    }
    void open_details(int index)
    {
        open_dropdown(index);
        press({"Down", "Down", "Return"});
        require(app()->detail_popup, "the details are not open");
    }
    void open_details(const std::string &name) { open_details(row_of(name)); }

    std::vector<std::string> service_texts() { return texts(app()->service_genlist); }

    /* The names of the files that the rows show. */
    std::vector<std::string> service_pictures()
    {
        std::vector<std::string> names;
        for (Elm_Object_Item *item = elm_genlist_first_item_get(app()->service_genlist); item;
             item = elm_genlist_item_next_get(item)) {
            const char *file = nullptr;
            if (const Evas_Object *icon = elm_object_item_part_content_get(item, "elm.swallow.icon"))
                elm_image_file_get(icon, &file, nullptr);
            names.push_back(file ? std::filesystem::path(file).filename().string() : "");
        }
        return names;
    }

private:
    /* The cursors outlive every popup. A device without services uses up what they hold. */
    void forget_services()
    {
        DeviceEntry none{};
        DeviceEntry *const table = app()->table;
        app()->table = &none;
        for (int i = 0; i < 3; ++i) {
            free(_service_item_label_get(&none, nullptr, "elm.text"));
            evas_object_del(_service_item_content_get(&none, app()->base, "elm.swallow.icon"));
        }
        app()->table = table;
    }
};

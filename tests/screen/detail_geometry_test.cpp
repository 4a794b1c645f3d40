/* Sizes and texts of the detail popup's table, in both layouts and both widths. */

#include <cstdlib>
#include <dlog.h>
#include <fstream>
#include <gmock/gmock.h>
#include <optional>

#include "canvas_parts.h"
#include "desktop/port_failures.h"
#include "details.h"
#include "spy.h"
#include "ug/detail_popup.h"
#include "ug/settings_watch.h"

using testing::HasSubstr;

namespace {

constexpr const char *kHeadingId = "COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE";

struct Cell {
    int column, row, columns, rows;
    bool operator==(const Cell &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Cell &cell)
{
    return out << cell.column << ',' << cell.row << ',' << cell.columns << ',' << cell.rows;
}

Size max_of(const Evas_Object *object)
{
    Size size{};
    evas_object_size_hint_max_get(object, &size.width, &size.height);
    return size;
}

Cell cell_of(Evas_Object *object)
{
    Cell cell{};
    elm_table_pack_get(object, &cell.column, &cell.row, &cell.columns, &cell.rows);
    return cell;
}

std::vector<int> colour_of(const Evas_Object *object)
{
    std::vector<int> rgba(4);
    evas_object_color_get(object, &rgba[0], &rgba[1], &rgba[2], &rgba[3]);
    return rgba;
}

bool is_rectangle(const Evas_Object *object)
{
    return std::string(evas_object_type_get(object)) == "rectangle";
}

/* The objects of the detail table, told by their cell and their order in it. */
struct DetailTable {
    Evas_Object *table = nullptr;
    Evas_Object *spacer = nullptr;
    Evas_Object *heading = nullptr;
    Evas_Object *band = nullptr;
    Evas_Object *caption = nullptr;
    Evas_Object *back = nullptr;
    Evas_Object *services = nullptr;
    Evas_Object *margin = nullptr;
};

/* A profile of the test's own. */
struct Product {
    bool board = false;
    std::optional<bool> wide = false; /* unset: not told */
};

struct GeometryTest : DetailsTest {
    GeometryTest() { register_devices({with_services("Phone", 5)}); }

    void open(const Product &product, bool portrait = false)
    {
        const auto profile = folder() / "product.ini";
        std::ofstream out(profile);
        out << "[profile]\ntitle=Test\n[custom-bool]\n"
            << "com.corvane/featureconf/quince_support=" << (product.board ? "true" : "false") << '\n';
        if (product.wide)
            out << "com.corvane/featureconf/product.juniper_support=" << (*product.wide ? "true" : "false") << '\n';
        out << "[custom-string]\ncom.corvane/featureconf/product.device_sid=REP.DEVICE.ALDER\n"
            << "[platform-int]\ncom.corvane/feature/screen.width=1920\ncom.corvane/feature/screen.height=1080\n";
        out.close();
        use_product(profile);
        set("orientation", portrait ? "portrait" : "landscape");
        DetailsTest::open();
    }

    void show()
    {
        selected_item_index = 0;
        forget();
        spy::forget();
        show_detail_popup(app());
        panel().settle();
    }

    DetailTable parts()
    {
        DetailTable found;
        found.table = elm_object_content_get(app()->detail_popup);
        Eina_List *members = evas_object_smart_members_get(found.table);
        std::vector<Evas_Object *> children;
        for (const Eina_List *link = members; link; link = eina_list_next(link)) {
            auto *member = static_cast<Evas_Object *>(eina_list_data_get(link));
            Eina_List *packed = evas_object_table_children_get(member);
            for (const Eina_List *child = packed; child; child = eina_list_next(child))
                children.push_back(static_cast<Evas_Object *>(eina_list_data_get(child)));
            eina_list_free(packed);
        }
        eina_list_free(members);
        EXPECT_EQ(children.size(), 7U);
        for (Evas_Object *child : children) {
            const Cell cell = cell_of(child);
            if (cell == Cell{0, 0, 1, 1})
                (is_rectangle(child) ? found.spacer : found.heading) = child;
            else if (cell == Cell{0, 3, 1, 1})
                (is_rectangle(child) ? found.band : found.caption) = child;
            else if (cell == Cell{0, 4, 1, 5})
                (is_rectangle(child) ? found.back : found.services) = child;
            else if (cell == Cell{1, 3, 1, 6})
                found.margin = child;
            else
                ADD_FAILURE() << "a cell of its own: " << cell;
        }
        return found;
    }

    static std::string text(const Evas_Object *label)
    {
        const char *text = elm_object_text_get(label);
        return text ? text : "";
    }

    static std::string heading_markup(const char *align, int size, const std::string &text)
    {
        return "<align=" + std::string(align) +
               "><font=CorvaneSans_400:style=Regular font_size=" + std::to_string(size) + ">" + text +
               "</font></align>";
    }

    int logged_text_width()
    {
        for (const LogLine &line : log()) {
            int width = 0;
            if (sscanf(line.message.c_str(), "Text width[%d]", &width) == 1)
                return width;
        }
        ADD_FAILURE() << "no width was logged";
        return 0;
    }

    /* Words that the letters of the test's font set about `width` pixels wide in size 30. */
    static std::string words(size_t letters)
    {
        std::string text;
        while (text.size() < letters)
            text += "words of a ";
        return text.substr(0, letters - 1) + "e";
    }
};

/* Expected: sizes as hints (min, max) of each object. */
struct Expected {
    Size heading_min, heading_max, band, back, margin;
};

struct SizesTest : GeometryTest, testing::WithParamInterface<std::tuple<bool, bool, bool>> {
    bool board() const { return std::get<0>(GetParam()); }
    bool portrait() const { return std::get<1>(GetParam()); }
    bool wide() const { return std::get<2>(GetParam()); }
    bool compact() const { return board() && portrait(); }

    Expected expected() const
    {
        if (compact() && wide())
            return {{456, 45}, {456, 74}, {456, 25}, {456, 259}, {17, 284}};
        if (compact())
            return {{439, 25}, {439, 74}, {439, 25}, {439, 259}, {17, 284}};
        if (wide())
            return {{810, 80}, {810, 132}, {810, 44}, {810, 460}, {30, 504}};
        return {{780, 44}, {780, 132}, {780, 44}, {780, 460}, {30, 504}};
    }
};

TEST_P(SizesTest, FollowTheLayoutAndTheProduct)
{
    open({board(), wide()}, portrait());
    show();
    const DetailTable parts = this->parts();
    const Expected sizes = expected();

    EXPECT_EQ(min_of(parts.spacer), sizes.heading_min);
    EXPECT_EQ(max_of(parts.spacer), sizes.heading_min);
    /* A label measures itself afterwards, and the hint is its own then. */
    EXPECT_THAT(spy::calls_of("evas_object_size_hint_min_set", parts.heading),
                testing::Contains(testing::Field(
                    &spy::Call::numbers, testing::ElementsAre(sizes.heading_min.width, sizes.heading_min.height))));
    EXPECT_EQ(max_of(parts.heading), sizes.heading_max);
    EXPECT_EQ(min_of(parts.band), sizes.band);
    EXPECT_EQ(max_of(parts.band), sizes.band);
    EXPECT_EQ(min_of(parts.back), sizes.back);
    EXPECT_EQ(max_of(parts.back), sizes.back);
    EXPECT_EQ(min_of(parts.margin), sizes.margin);
    EXPECT_EQ(max_of(parts.margin), sizes.margin);
    EXPECT_EQ(logged(wide() ? "widthrect[810]" : "widthrect[780]"), 1);

    /* And on the screen. */
    const auto size = [](const Evas_Object *object) {
        return Size{area(const_cast<Evas_Object *>(object)).w, area(const_cast<Evas_Object *>(object)).h};
    };
    EXPECT_EQ(size(parts.band), sizes.band);
    EXPECT_EQ(size(parts.back), sizes.back);
    EXPECT_EQ(size(parts.services).width, sizes.back.width);
    EXPECT_EQ(size(parts.heading).width, sizes.heading_min.width);
    EXPECT_GE(size(parts.heading).height, sizes.heading_min.height);
    EXPECT_LE(size(parts.heading).height, sizes.heading_max.height);
    const Eina_Rectangle table = area(parts.table);
    EXPECT_GE(table.x, 0);
    EXPECT_GE(table.y, 0);
    EXPECT_LE(table.x + table.w, panel().width());
    EXPECT_LE(table.y + table.h, panel().height());
    EXPECT_GE(area(parts.caption).y, area(parts.heading).y + area(parts.heading).h) << "the rows do not overlap";
    EXPECT_GE(area(parts.services).y, area(parts.band).y + area(parts.band).h);
}

TEST_P(SizesTest, FillTheirCells)
{
    open({board(), wide()}, portrait());
    show();
    const DetailTable parts = this->parts();
    for (const Evas_Object *object :
         {parts.spacer, parts.heading, parts.band, parts.caption, parts.back, parts.services, parts.margin}) {
        double x = 0;
        double y = 0;
        evas_object_size_hint_weight_get(object, &x, &y);
        EXPECT_EQ(std::pair(x, y), std::pair(1.0, 1.0)) << evas_object_type_get(object);
        evas_object_size_hint_align_get(object, &x, &y);
        EXPECT_EQ(std::pair(x, y), std::pair(-1.0, -1.0)) << evas_object_type_get(object);
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, SizesTest, testing::Combine(testing::Bool(), testing::Bool(), testing::Bool()),
                         [](const auto &form) {
                             return std::string(std::get<0>(form.param) ? "board" : "television") +
                                    (std::get<1>(form.param) ? "_portrait" : "_landscape") +
                                    (std::get<2>(form.param) ? "_wide" : "_narrow");
                         });

TEST_F(GeometryTest, ShadesAreShownAndSpacersAreNot)
{
    open({});
    show();
    const DetailTable parts = this->parts();
    EXPECT_EQ(colour_of(parts.band), (std::vector<int>{0, 0, 0, 30}));
    EXPECT_EQ(colour_of(parts.back), (std::vector<int>{0, 0, 0, 10}));
    EXPECT_FALSE(evas_object_visible_get(parts.spacer));
    EXPECT_FALSE(evas_object_visible_get(parts.margin));
    for (const Evas_Object *object : {parts.heading, parts.band, parts.caption, parts.back, parts.services})
        EXPECT_TRUE(evas_object_visible_get(object));
    EXPECT_EQ(parts.services, app()->service_genlist);
}

TEST_F(GeometryTest, AProductThatDoesNotTellItsWidthIsNarrow)
{
    open({false, std::nullopt});
    show();
    EXPECT_EQ(logged("failed system_info_get_value_bool for larhc support"), 1);
    for (const LogLine &line : log()) {
        if (line.message.starts_with("failed")) {
            EXPECT_EQ(line.priority, DLOG_ERROR);
            EXPECT_EQ(line.function, "isJuniperLarchProduct");
        }
    }
    EXPECT_EQ(min_of(parts().spacer), (Size{780, 44}));
}

TEST_F(GeometryTest, AnAnswerThatFailsCountsForNothing)
{
    open({false, true});
    vesk_port::set_failures("system_info_get_custom_bool=-1");
    show();
    EXPECT_EQ(logged("failed system_info_get_value_bool for larhc support"), 1);
    EXPECT_EQ(min_of(parts().spacer), (Size{780, 44}));
}

/* ---- The heading and the caption ---- */

TEST_F(GeometryTest, AHeadingThatFitsStandsInTheMiddle)
{
    open({});
    show();
    const DetailTable parts = this->parts();
    EXPECT_EQ(text(parts.heading), heading_markup("center", 30, "Services used by the selected device"));
    const int width = logged_text_width();
    EXPECT_GT(width, 300) << "the text was measured";
    EXPECT_LE(width, 780);
    EXPECT_EQ(elm_label_line_wrap_get(parts.heading), ELM_WRAP_WORD);
    EXPECT_EQ(text(parts.caption), "<align=left><font=CorvaneSans_400:style=Regular font_size=24 color=#25a3ba>    "
                                   "Allowed services</font></align>");
}

TEST_F(GeometryTest, AHeadingThatIsTooWideIsSetAnewAndWraps)
{
    spy::overrides().texts[kHeadingId] = words(110);
    open({});
    show();
    const DetailTable parts = this->parts();
    EXPECT_GT(logged_text_width(), 780);
    EXPECT_EQ(text(parts.heading), heading_markup("left", 30, words(110)));
    EXPECT_EQ(area(parts.heading).w, 780);
    EXPECT_GT(area(parts.heading).h, 60) << "several lines";
    EXPECT_LE(area(parts.heading).h, 132);
    EXPECT_LE(area(parts.table).y + area(parts.table).h, 1080);
}

TEST_F(GeometryTest, AHeadingIsSetAnewFromTheFirstPixelTooMany)
{
    int widest = 0;
    int narrowest_too_wide = 100000;
    open({});
    for (size_t letters = 40; letters < 80; ++letters) {
        spy::overrides().texts[kHeadingId] = words(letters);
        show();
        const int width = logged_text_width();
        const bool anew = text(parts().heading).starts_with("<align=left>");
        EXPECT_EQ(anew, width > 780) << width;
        if (anew)
            narrowest_too_wide = std::min(narrowest_too_wide, width);
        else
            widest = std::max(widest, width);
        _close_button_cb(app(), nullptr, nullptr);
    }
    EXPECT_GT(widest, 700);
    EXPECT_LT(narrowest_too_wide, 860);
}

TEST_F(GeometryTest, RightToLeftAlignsAtTheOtherSide)
{
    spy::overrides().texts[kHeadingId] = words(110);
    open({});
    gbReverse = true;
    show();
    EXPECT_EQ(text(parts().heading), heading_markup("right", 30, words(110)));
    EXPECT_TRUE(text(parts().caption).starts_with("<align=right>"));
    _close_button_cb(app(), nullptr, nullptr);
    spy::overrides().texts.clear();
    show();
    EXPECT_TRUE(text(parts().heading).starts_with("<align=center>"));
}

TEST_F(GeometryTest, TheCompactHeadingIsSmallAndAtTheSide)
{
    open({true}, true);
    show();
    EXPECT_EQ(text(parts().heading), heading_markup("left", 17, "Services used by the selected device"));
    EXPECT_LE(logged_text_width(), 438);
    EXPECT_TRUE(text(parts().caption)
                    .starts_with("<align=left><font=CorvaneSans_400:style=Regular font_size=14 "
                                 "color=#25a3ba>    Allowed"));
    _close_button_cb(app(), nullptr, nullptr);
    gbReverse = true;
    show();
    EXPECT_EQ(text(parts().heading), heading_markup("right", 17, "Services used by the selected device"));
}

TEST_F(GeometryTest, ACompactHeadingThatIsTooWideGrows)
{
    spy::overrides().texts[kHeadingId] = words(70);
    open({true}, true);
    show();
    const DetailTable parts = this->parts();
    EXPECT_GT(logged_text_width(), 438);
    EXPECT_EQ(text(parts.heading), heading_markup("left", 30, words(70)));
    EXPECT_EQ(elm_label_line_wrap_get(parts.heading), ELM_WRAP_WORD);
    EXPECT_EQ(area(parts.heading).w, 439);
    EXPECT_LE(area(parts.heading).h, 74);
}

TEST_F(GeometryTest, ATurnedTelevisionKeepsTheLargeLayout)
{
    open({false}, true);
    show();
    EXPECT_TRUE(text(parts().heading).starts_with("<align=center>"));
    EXPECT_THAT(text(parts().heading), HasSubstr("font_size=30"));
}

TEST_F(GeometryTest, TextsAreCutAtTheBuffersEnd)
{
    spy::overrides().texts[kHeadingId] = words(400);
    spy::overrides().texts["TV_SID_ALLOWED_SERVICES"] = words(400);
    open({});
    show();
    EXPECT_EQ(text(parts().heading), heading_markup("left", 30, words(400)).substr(0, 299));
    EXPECT_EQ(text(parts().caption).size(), 299U);
    EXPECT_LE(area(parts().table).y + area(parts().table).h, 1080);
}

} // namespace

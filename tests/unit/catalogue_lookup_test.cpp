// The built catalogues, asked the way the module asks them: dgettext, with the language that a television is set to.

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <libintl.h>
#include <ostream>
#include <string>
#include <vector>

namespace {

constexpr const char *kDomain = "ug-VeskUG-efl";

// The text that a person sees whose television is set to `language`. LANGUAGE counts in any locale but "C"; the library
// reads it anew only after a change of locale, so there has to be one.
std::string text(const std::string &language, const char *id)
{
    setenv("LANGUAGE", language.c_str(), 1);
    setlocale(LC_ALL, "C");
    setlocale(LC_ALL, "C.UTF-8");
    bindtextdomain(kDomain, LOCALE_DIR);
    bind_textdomain_codeset(kDomain, "UTF-8");
    return dgettext(kDomain, id);
}

std::vector<std::string> catalogues()
{
    std::vector<std::string> names;
    std::ifstream file(LINGUAS_FILE);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#')
            names.push_back(line);
    }
    return names;
}

struct Lookup {
    const char *language;
    const char *id;
    const char *text;
};

// What the name of the test ends with.
void PrintTo(const Lookup &lookup, std::ostream *out)
{
    *out << lookup.language;
}

class CatalogueLookup : public testing::TestWithParam<Lookup> {};

TEST_P(CatalogueLookup, FindsTheTextOfTheLanguage)
{
    EXPECT_EQ(text(GetParam().language, GetParam().id), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, CatalogueLookup,
    testing::Values(Lookup{"en", "COM_SID_CLOSE", "Close"}, Lookup{"en_GB", "TV_SID_CHECKED", "Ticked"},
                    Lookup{"en_AU", "TV_SID_CHECKED", "Ticked"}, Lookup{"en_US", "TV_SID_CHECKED", "Checked"},
                    Lookup{"de", "COM_SID_DELETE", "Löschen"}, Lookup{"de_DE", "COM_SID_DELETE", "Löschen"},
                    Lookup{"de_AT", "COM_SID_DELETE", "Löschen"}, Lookup{"de_DE.UTF-8", "COM_SID_DELETE", "Löschen"},
                    Lookup{"ar", "COM_TV_SID_YES", "نعم"}, Lookup{"ar_AE", "COM_TV_SID_YES", "نعم"},
                    Lookup{"ar_AE.UTF-8", "COM_TV_SID_YES", "نعم"}, Lookup{"he_IL", "COM_TV_SID_YES", "כן"},
                    Lookup{"fa_IR", "COM_TV_SID_YES", "بله"}, Lookup{"ur_PK", "COM_TV_SID_YES", "ہاں"},
                    Lookup{"ckb_IQ", "COM_TV_SID_YES", "بەڵێ"}, Lookup{"ko_KR", "COM_SID_CLOSE", "닫기"},
                    Lookup{"pt", "COM_SID_DELETE", "Eliminar"}, Lookup{"pt_PT", "COM_SID_DELETE", "Eliminar"},
                    Lookup{"pt_BR", "COM_SID_DELETE", "Excluir"}, Lookup{"zh_CN", "COM_SID_CLOSE", "关闭"},
                    Lookup{"zh_SG", "COM_SID_CLOSE", "关闭"}, Lookup{"zh_TW", "COM_SID_CLOSE", "關閉"},
                    Lookup{"zh_HK", "COM_SID_CLOSE", "關閉"}, Lookup{"sr_RS", "COM_TV_SID_YES", "Да"},
                    Lookup{"sr_RS@latin", "COM_TV_SID_YES", "Da"}));

TEST(Catalogues, EveryOneIsFoundUnderItsOwnName)
{
    ASSERT_GE(catalogues().size(), 40U);
    for (const std::string &name : catalogues())
        EXPECT_NE(text(name, "COM_SID_DEVICE_LIST_KR_LIST"), "COM_SID_DEVICE_LIST_KR_LIST") << name;
}

TEST(Catalogues, ALanguageWithoutOneGivesTheNextInTheList)
{
    EXPECT_EQ(text("tlh:en", "COM_SID_CLOSE"), "Close");
}

TEST(Catalogues, ALanguageWithoutOneGivesTheNameOfTheText)
{
    EXPECT_EQ(text("tlh", "COM_SID_CLOSE"), "COM_SID_CLOSE");
}

} // namespace

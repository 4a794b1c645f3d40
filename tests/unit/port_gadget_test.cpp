/* The gadget host's calls and the utility library's life cycle. */

#include "desktop/gadget_host.h"
#include "ea.h"
#include "port_fixture.h"

namespace {

/* Gadget handles are the host's; the port hands them on unseen. */
ui_gadget_h handle_of(int &gadget)
{
    return reinterpret_cast<ui_gadget_h>(&gadget);
}

class PortGadget : public PortTest {
protected:
    ~PortGadget() override
    {
        vesk_port::set_gadget_window(nullptr);
        vesk_port::set_destroy_handler(nullptr);
    }
};

} // namespace

TEST_F(PortGadget, TheWindowIsTheOneThatTheHostNamed)
{
    int window = 0;
    EXPECT_EQ(ug_get_window(), nullptr);
    vesk_port::set_gadget_window(&window);
    EXPECT_EQ(ug_get_window(), &window);
}

TEST_F(PortGadget, TheWishToBeDestroyedReachesTheHost)
{
    int gadget = 0;
    ui_gadget_h asked = nullptr;
    vesk_port::set_destroy_handler([&](ui_gadget_h ug) {
        asked = ug;
        return 0;
    });
    EXPECT_EQ(ug_destroy_me(handle_of(gadget)), 0);
    EXPECT_EQ(asked, handle_of(gadget));
}

TEST_F(PortGadget, TheWishFailsWhereNoGadgetRuns)
{
    int gadget = 0;
    EXPECT_LT(ug_destroy_me(handle_of(gadget)), 0);
    vesk_port::set_destroy_handler([](ui_gadget_h) { return -3; });
    EXPECT_EQ(ug_destroy_me(handle_of(gadget)), -3);
    EXPECT_LT(ug_destroy_me(nullptr), 0);
}

TEST_F(PortTest, TheUtilityLibraryCountsItsUsers)
{
    EXPECT_EQ(ea_init(0, 0), 1);
    EXPECT_EQ(ea_init(0, 0), 2);
    EXPECT_EQ(ea_shutdown(), 1);
    EXPECT_EQ(ea_shutdown(), 0);
    EXPECT_LT(ea_shutdown(), 0);
}

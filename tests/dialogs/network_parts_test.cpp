#include "dialogs/network_parts.h"

#include <gtest/gtest.h>

namespace veldra {
namespace {

class NetworkParts : public testing::Test {
 protected:
    NetworkParts() {
        session.netz.append();
        session.netz.append();
    }
    Session session;
};

TEST_F(NetworkParts, EveryPartStartsMarked) {
    EXPECT_EQ(mark_buttons(session, 1), (MarkButtons{false, true}));
    EXPECT_EQ(mark_buttons(session, 2), (MarkButtons{false, true}));
}

TEST_F(NetworkParts, MarkAndButtonsOfAPartGoTogether) {
    mark_for_plotting(session, 2, false);
    EXPECT_EQ(session.netz[2].netz_plotmarke, table_false);
    EXPECT_EQ(session.netz[1].netz_plotmarke, table_true);
    EXPECT_EQ(mark_buttons(session, 2), (MarkButtons{true, false}));
    mark_for_plotting(session, 2, true);
    EXPECT_EQ(session.netz[2].netz_plotmarke, table_true);
}

TEST_F(NetworkParts, NoPartHasNoButtons) {
    EXPECT_EQ(mark_buttons(session, 0), MarkButtons());
    EXPECT_EQ(mark_buttons(session, 3), MarkButtons());
    mark_for_plotting(session, 0, false);
    mark_for_plotting(session, 3, false);
    EXPECT_EQ(session.netz[0].netz_plotmarke, table_true);
}

TEST_F(NetworkParts, MenuAndToolbarFollowTheDialog) {
    show_network_parts(session.window, true);
    EXPECT_TRUE(session.window.frm_netzteile_shown);
    EXPECT_TRUE(session.window[MenuItem::m_ansicht_netzteile].checked);
    EXPECT_FALSE(session.window[ToolButton::netzteile].enabled);
    show_network_parts(session.window, false);
    EXPECT_FALSE(session.window.frm_netzteile_shown);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_netzteile].checked);
    EXPECT_TRUE(session.window[ToolButton::netzteile].enabled);
}

}  // namespace
}  // namespace veldra

#include "settings/defaults.h"

#include <string>

#include <gtest/gtest.h>

#include "model/session.h"

namespace veldra {
namespace {

/// Settings in which no value of any group is its default.
Settings other_settings() {
    Settings other;
    const auto change = [](auto& values) {
        for (auto& value : values) {
            value = static_cast<std::remove_reference_t<decltype(value)>>(value + 1);
        }
    };
    change(other.punsigscr);
    change(other.punsigplo);
    change(other.stevdrw);
    change(other.stevrgb);
    change(other.stevwert);
    change(other.stnvdrw);
    change(other.stnvrgb);
    change(other.stnvwert);
    change(other.stepdrw);
    change(other.steprgb);
    change(other.stepwert);
    change(other.vektAdrw);
    change(other.vektArgb);
    change(other.vektNdrw);
    change(other.vektNrgb);
    change(other.grenzdrw);
    change(other.grenzrgb);
    other.pubgrascr = other.nubgrascr = 33;
    other.pubsizplo = other.nubsizplo = 33;
    other.pubfon = other.nubfon = "Courier";
    other.pubbol = other.pubita = other.pubund = -1;
    other.nubbol = other.nubita = other.nubund = -1;
    other.pubcolor = other.nubcolor = 33;
    other.stanplt = other.stanptp = 33;
    other.Stquerscr = other.Stkreuscr = other.lenoriscr = 33;
    other.Stquerplo = other.Stkreuplo = other.lenoriplo = 33;
    other.faktorStrich = 33;
    other.stnddrw = 33;
    other.stndrgb = 33;
    other.stndwert = 33;
    return other;
}

struct Group {
    std::string name;
    void (*helper)(Session&, int);
    /// Copies by hand what belongs to the group.
    void (*copy)(const Settings& from, Settings& to);
    std::size_t first_scale = 0;  ///< of the three vector scales in the group; 0 if it has none
};

template <std::size_t First>
void copy_slots(const Settings& from, Settings& to) {
    for (std::size_t slot = First; slot < First + 3; ++slot) {
        to.vektAdrw[slot] = from.vektAdrw[slot];
        to.vektArgb[slot] = from.vektArgb[slot];
        to.vektNdrw[slot] = from.vektNdrw[slot];
        to.vektNrgb[slot] = from.vektNrgb[slot];
    }
}

void copy_test(const Settings& from, Settings& to) {
    to.stnddrw = from.stnddrw;
    to.stndrgb = from.stndrgb;
    to.stndwert = from.stndwert;
    to.stevdrw = from.stevdrw;
    to.stevrgb = from.stevrgb;
    to.stevwert = from.stevwert;
    to.stnvdrw = from.stnvdrw;
    to.stnvrgb = from.stnvrgb;
    to.stnvwert = from.stnvwert;
    to.stepdrw = from.stepdrw;
    to.steprgb = from.steprgb;
    to.stepwert = from.stepwert;
}

void copy_punkt_screen(const Settings& from, Settings& to) {
    to.punsigscr = from.punsigscr;
    to.pubgrascr = from.pubgrascr;
    to.pubfon = from.pubfon;
    to.pubbol = from.pubbol;
    to.pubita = from.pubita;
    to.pubund = from.pubund;
    to.pubcolor = from.pubcolor;
    to.stanplt = from.stanplt;
    to.stanptp = from.stanptp;
    to.nubgrascr = from.nubgrascr;
    to.nubfon = from.nubfon;
    to.nubbol = from.nubbol;
    to.nubita = from.nubita;
    to.nubund = from.nubund;
    to.nubcolor = from.nubcolor;
}

void copy_punkt_plot(const Settings& from, Settings& to) {
    to.punsigplo = from.punsigplo;
    to.pubsizplo = from.pubsizplo;
    to.nubsizplo = from.nubsizplo;
}

void copy_beob_screen(const Settings& from, Settings& to) {
    to.Stquerscr = from.Stquerscr;
    to.Stkreuscr = from.Stkreuscr;
    to.lenoriscr = from.lenoriscr;
}

void copy_beob_plot(const Settings& from, Settings& to) {
    to.Stquerplo = from.Stquerplo;
    to.Stkreuplo = from.Stkreuplo;
    to.lenoriplo = from.lenoriplo;
    to.faktorStrich = from.faktorStrich;
}

void copy_grenzen(const Settings& from, Settings& to) {
    to.grenzdrw = from.grenzdrw;
    to.grenzrgb = from.grenzrgb;
}

class DefaultHelper : public testing::TestWithParam<Group> {
 protected:
    DefaultHelper() {
        session_.settings = other_settings();
        session_.vektor_massstab.fill(7.0);
        session_.vektor_massstab_plot.fill(8.0);
    }

    /// The group's values of `from` among the other values of `rest`.
    static Settings mixed(const Settings& from, Settings rest) {
        GetParam().copy(from, rest);
        return rest;
    }
    void expect_scales(const std::array<double, 7>& scales, double of_group, double others) const {
        const std::size_t first = GetParam().first_scale;
        for (std::size_t slot = 1; slot <= 6; ++slot) {
            const bool in_group = first > 0 && slot >= first && slot < first + 3;
            EXPECT_EQ(scales[slot], in_group ? of_group : others) << "slot " << slot;
        }
    }

    Session session_;
};

TEST_P(DefaultHelper, Code0SetsTheDefaultsAndSavesThem) {
    session_.twins.settings = other_settings();
    session_.twins.vektor_massstab.fill(9.0);
    GetParam().helper(session_, 0);
    EXPECT_EQ(session_.settings, mixed(Settings{}, other_settings()));
    EXPECT_EQ(session_.twins.settings, mixed(Settings{}, other_settings()));
    expect_scales(session_.vektor_massstab, 0.5, 7.0);
    expect_scales(session_.vektor_massstab_plot, 0.5, 8.0);
    expect_scales(session_.twins.vektor_massstab, 0.5, 9.0);
}

TEST_P(DefaultHelper, Code1SetsTheDefaultsAndLeavesTheTwins) {
    session_.twins.settings = other_settings();
    session_.twins.vektor_massstab.fill(9.0);
    GetParam().helper(session_, 1);
    EXPECT_EQ(session_.settings, mixed(Settings{}, other_settings()));
    EXPECT_EQ(session_.twins.settings, other_settings());
    expect_scales(session_.vektor_massstab, 0.5, 7.0);
    expect_scales(session_.twins.vektor_massstab, 9.0, 9.0);
}

TEST_P(DefaultHelper, Code2SavesTheValuesInTheTwins) {
    GetParam().helper(session_, 2);
    EXPECT_EQ(session_.settings, other_settings());
    EXPECT_EQ(session_.twins.settings, mixed(other_settings(), Settings{}));
    expect_scales(session_.vektor_massstab, 7.0, 7.0);
    expect_scales(session_.twins.vektor_massstab, 7.0, 0.5);
    expect_scales(session_.twins.vektor_massstab_plot, 8.0, 0.5);
}

TEST_P(DefaultHelper, Code3RestoresTheValuesFromTheTwins) {
    GetParam().helper(session_, 2);
    session_.settings = Settings{};
    session_.vektor_massstab.fill(1.0);
    session_.vektor_massstab_plot.fill(1.0);
    GetParam().helper(session_, 3);
    EXPECT_EQ(session_.settings, mixed(other_settings(), Settings{}));
    expect_scales(session_.vektor_massstab, 7.0, 1.0);
    expect_scales(session_.vektor_massstab_plot, 8.0, 1.0);
}

TEST_P(DefaultHelper, OtherCodesDoNothing) {
    GetParam().helper(session_, 4);
    GetParam().helper(session_, -1);
    EXPECT_EQ(session_.settings, other_settings());
    EXPECT_EQ(session_.twins.settings, Settings{});
}

INSTANTIATE_TEST_SUITE_P(
    Groups, DefaultHelper,
    testing::Values(Group{"beob_screen", standard_beob_screen, copy_beob_screen},
                    Group{"beob_plot", standard_beob_plot, copy_beob_plot},
                    Group{"vektor_lage", standard_vektor_lage, copy_slots<1>, 1},
                    Group{"vektor_hoehe", standard_vektor_hoehe, copy_slots<4>, 4},
                    Group{"test", standard_test, copy_test},
                    Group{"punkt_screen", standard_punkt_screen, copy_punkt_screen},
                    Group{"punkt_plot", standard_punkt_plot, copy_punkt_plot},
                    Group{"grenzen", standard_grenzen, copy_grenzen}),
    [](const testing::TestParamInfo<Group>& group) { return group.param.name; });

TEST(Defaults, AllGroupsTogetherHoldEveryDisplaySetting) {
    Session session;
    session.settings = other_settings();
    session.titel[0].setTitelSize(9);
    session.titel[3].setTitelFont("Courier");
    session.titel[3].setTitelUndr(-1);
    session.titel[3].setTitelText("bleibt");
    standard_alle(session);
    // The unused elements 0 of the vector slots belong to no group.
    session.settings.vektAdrw[0] = session.settings.vektNdrw[0] = 0;
    session.settings.vektArgb[0] = session.settings.vektNrgb[0] = 0;
    EXPECT_EQ(session.settings, Settings{});
    EXPECT_EQ(session.titel[0].getTitelSize(), 3.5F);
    EXPECT_EQ(session.titel[1].getTitelSize(), 3.0F);
    EXPECT_EQ(session.titel[3].getTitelFont(), "Arial");
    EXPECT_EQ(session.titel[3].getTitelUndr(), 0);
    EXPECT_EQ(session.titel[3].getTitelText(), "bleibt");
}

TEST(Defaults, SeveralStandardButtonsAreUndoneFromTheTwins) {
    Session session;
    session.settings.Stquerscr = 300;
    session.settings.grenzdrw[1] = 1;
    for (const auto helper : {standard_beob_screen, standard_grenzen}) {
        helper(session, 2);
        helper(session, 1);
    }
    EXPECT_EQ(session.settings.Stquerscr, 200);
    EXPECT_EQ(session.settings.grenzdrw[1], 6);
    standard_beob_screen(session, 3);
    standard_grenzen(session, 3);
    EXPECT_EQ(session.settings.Stquerscr, 300);
    EXPECT_EQ(session.settings.grenzdrw[1], 1);
}

}  // namespace
}  // namespace veldra

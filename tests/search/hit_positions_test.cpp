#include "search/hit_positions.h"

#include <gtest/gtest.h>

#include "support/fake_windows.h"

using namespace lirovan;
using platform::button::Down;
using platform::button::Up;
using search::HitPositions;
using search::hitStops;

TEST(HitStops, AreOrderedAndSpread) {
    const std::pair<std::vector<double>, std::vector<qint32>> cases[] = {
        {{100, 100, 250}, {100, 133, 283}},
        {{300, 120}, {120, 333}},
        {{100, 100, 100}, {100, 133, 166}},
        {{40}, {73}},
        {{}, {33}},
        {{10.5, 11.5, 50}, {10, 12, 83}},
    };
    for (const auto& [offsets, stops] : cases) EXPECT_EQ(hitStops(offsets), stops);
}

namespace {

struct Page {
    test::FakePageView view;
    QMap<QString, bool> enabled{{Up.toString(), true}, {Down.toString(), true}};
    HitPositions hits{view, [this](QStringView key, bool on) { enabled[key.toString()] = on; }};
    bool up() const { return enabled[Up.toString()]; }
    bool down() const { return enabled[Down.toString()]; }
};

}  // namespace

TEST(HitPositions, StepsToBothEndsWithoutWrapping) {
    Page page;
    page.view.positions = {100, 200, 300};
    page.hits.SetPosZero();
    EXPECT_EQ(page.view.scrolledTo, 100);
    EXPECT_TRUE(page.up() && page.down());  // the buttons are not its matter

    page.hits.DownerPos();
    EXPECT_EQ(page.view.scrolledTo, 200);
    EXPECT_TRUE(page.up() && page.down());
    page.hits.DownerPos();
    EXPECT_EQ(page.view.scrolledTo, 333);
    EXPECT_TRUE(page.up() && !page.down());
    page.view.scrolledTo = -1;
    page.hits.DownerPos();
    EXPECT_EQ(page.view.scrolledTo, -1);
    EXPECT_EQ(page.hits.current(), 2);

    page.hits.UpperPos();
    page.hits.UpperPos();
    EXPECT_EQ(page.view.scrolledTo, 100);
    EXPECT_TRUE(!page.up() && page.down());
    page.view.scrolledTo = -1;
    page.hits.UpperPos();
    EXPECT_EQ(page.view.scrolledTo, -1);
    EXPECT_EQ(page.hits.current(), 0);

    page.view.positions = {40};  // one stop stays within reach
    page.hits.SetPosZero();
    for (int press = 0; press < 3; ++press) {
        page.view.scrolledTo = -1;
        page.hits.DownerPos();
        EXPECT_EQ(page.view.scrolledTo, 73);
        EXPECT_TRUE(!page.up() && page.down());
    }
}

TEST(HitPositions, GoesOnFromTheSameHitAfterANewLayout) {
    Page page;
    page.view.positions = {100, 200, 300};
    page.hits.SetPosZero();
    page.hits.DownerPos();
    page.view.positions = {150, 350, 500};
    page.view.scrolledTo = -1;
    page.hits.ReOrderPos();
    EXPECT_EQ(page.view.scrolledTo, -1);
    page.hits.DownerPos();
    EXPECT_EQ(page.view.scrolledTo, 533);
}

TEST(HitPositions, StartsAnExtraWindowOnce) {
    Page page;
    page.hits.firstActivation();
    EXPECT_TRUE(!page.up() && !page.down());
    EXPECT_EQ(page.view.scrolledTo, 33);
    page.view.positions = {5, 6};
    page.view.scrolledTo = -1;
    page.hits.firstActivation();
    EXPECT_EQ(page.view.scrolledTo, -1);

    Page two;
    two.view.positions = {5, 60};
    two.hits.firstActivation();
    EXPECT_TRUE(!two.up() && two.down());
    EXPECT_EQ(two.view.scrolledTo, 5);
}

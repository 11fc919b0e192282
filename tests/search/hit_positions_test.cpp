#include "search/pages/hit_positions.h"

#include <gtest/gtest.h>

#include "support/fake_windows.h"

using namespace lirovan;
using platform::button::Down;
using platform::button::Up;
using search::HitPositions;

TEST(HitStops, AreOrderedAndSpread) {
    const std::pair<std::vector<double>, std::vector<qint32>> cases[] = {
        {{100, 100, 250}, {100, 133, 283}}, {{300, 120}, {120, 333}},
        {{100, 100, 100}, {100, 133, 166}}, {{}, {33}},
        {{10.5, 11.5, 50}, {10, 12, 83}},
    };
    for (const auto& [offsets, stops] : cases) EXPECT_EQ(search::hitStops(offsets), stops);
}

namespace {

struct Page {
    test::FakePageView view;
    QMap<QString, bool> enabled{{Up.toString(), true}, {Down.toString(), true}};
    HitPositions hits{view, [this](QStringView key, bool on) { enabled[key.toString()] = on; }};

    // Where `step` scrolled to, -1: nowhere; and which buttons can be pressed then.
    void expect(void (HitPositions::*step)(), int scrolledTo, bool up, bool down) {
        view.scrolledTo = -1;
        (hits.*step)();
        EXPECT_EQ(view.scrolledTo, scrolledTo);
        EXPECT_EQ(enabled[Up.toString()], up);
        EXPECT_EQ(enabled[Down.toString()], down);
    }
};

}  // namespace

TEST(HitPositions, StepsToBothEndsWithoutWrapping) {
    Page page;
    page.view.positions = {100, 200, 300};
    page.expect(&HitPositions::SetPosZero, 100, true, true);  // the buttons are not its matter
    page.expect(&HitPositions::DownerPos, 200, true, true);
    page.expect(&HitPositions::DownerPos, 333, true, false);
    page.expect(&HitPositions::DownerPos, -1, true, false);
    page.expect(&HitPositions::UpperPos, 200, true, true);
    page.expect(&HitPositions::UpperPos, 100, false, true);
    page.expect(&HitPositions::UpperPos, -1, false, true);
    page.expect(&HitPositions::DownerPos, 200, true, true);

    page.hits.goToButton(2);
    EXPECT_EQ(page.view.scrolledTo, 333);
    EXPECT_TRUE(page.enabled[Up.toString()] && !page.enabled[Down.toString()]);
    page.hits.goToButton(3);                // there is none
    page.view.positions = {300, 100, 100};  // numbers go by words, stops by height
    page.hits.goToButton(2);
    EXPECT_EQ(page.hits.current(), 1);
    page.hits.goToButton(1);
    EXPECT_EQ(page.view.scrolledTo, 100);
    EXPECT_TRUE(!page.enabled[Up.toString()] && page.enabled[Down.toString()]);
    page.view.positions = {100, 200, 300};
    page.expect(&HitPositions::DownerPos, 200, true, true);

    page.view.positions = {150, 350, 500};  // after a new layout it goes on from the same hit
    page.expect(&HitPositions::DownerPos, 533, true, false);
    page.view.positions = {160, 360, 600};
    page.expect(&HitPositions::UpperPos, 360, true, true);
    page.view.outcome = platform::Outcome::TimedOut;  // a page that does not answer keeps its stops
    page.expect(&HitPositions::DownerPos, 633, true, false);
    page.view.outcome = platform::Outcome::Answered;

    page.view.firstIsInView = true;  // without a scroll that would cut the header off
    page.expect(&HitPositions::SetPosZero, 0, true, false);
    page.expect(&HitPositions::DownerPos, 360, true, false);
    page.expect(&HitPositions::UpperPos, 0, false, true);
    page.view.positions = {};
    page.expect(&HitPositions::SetPosZero, 0, false, true);
    page.view.firstIsInView = false;
    page.expect(&HitPositions::SetPosZero, 0, false, true);

    page.view.positions = {40};  // one stop stays within reach
    page.expect(&HitPositions::SetPosZero, 73, false, true);
    for (int press = 0; press < 3; ++press) page.expect(&HitPositions::DownerPos, 73, false, true);
}

TEST(HitPositions, OutlinesTheHitThatIsGoneToWhateverItsNumber) {
    Page page;
    page.view.positions = {300, 100, 200, 400};  // the second word stands before the first
    page.hits.SetPosZero();
    EXPECT_EQ(page.view.outlined, 1);
    page.hits.DownerPos();
    EXPECT_EQ(page.view.outlined, 2);
    page.hits.goToNextOf({{0, 1}, {3, 1}});
    EXPECT_EQ(page.view.outlined, 0);
    page.hits.goToNextOf({{3, 1}});
    EXPECT_EQ(page.view.outlined, 3);
    EXPECT_FALSE(page.enabled[Down.toString()]);
    page.hits.goToNextOf({{1, 2}});  // round the page
    EXPECT_EQ(page.view.outlined, 1);
    EXPECT_EQ(page.hits.current(), 0);
    EXPECT_FALSE(page.enabled[Up.toString()]);

    page.view.positions = {300, 100, 500, 400};  // the layout is another by now
    page.hits.goToButton(2);
    EXPECT_EQ(page.view.outlined, 2);
    EXPECT_EQ(page.hits.current(), 3);
    page.view.positions = {40};  // the one hit can be gone back to
    page.hits.goToNextOf({{0, 1}});
    EXPECT_TRUE(page.enabled[Down.toString()] && !page.enabled[Up.toString()]);
}

TEST(HitPositions, StartsAnExtraWindowOnce) {
    Page page, two;
    page.expect(&HitPositions::firstActivation, 0, false, false);
    page.view.positions = {5, 6};
    page.expect(&HitPositions::firstActivation, -1, false, false);
    two.view.positions = {5, 60};
    two.expect(&HitPositions::firstActivation, 5, false, true);
}

// Grids: from texts to points.
#include <gtest/gtest.h>

#include "host/output/errors.h"
#include "tools/se_host/sweep/grid.h"

namespace se_host::sweep {
namespace {

std::vector<std::string> namesOf(const std::vector<std::string>& texts) {
    std::vector<Axis> axes;
    for (const std::string& text : texts) axes.push_back(axisOf(text));
    std::vector<std::string> names;
    for (const Point& point : pointsOf(axes)) names.push_back(point.name);
    return names;
}

TEST(Grid, HasEveryCombination) {
    EXPECT_EQ(namesOf({"a=1,2", "b=x,y"}),
              (std::vector<std::string>{"a=1,b=x", "a=1,b=y", "a=2,b=x", "a=2,b=y"}));
}

TEST(Grid, OfNothingIsEmpty) {
    EXPECT_TRUE(pointsOf({}).empty());
}

TEST(Grid, NamesAreFileNames) {
    EXPECT_EQ(namesOf({"diags/basic/gain=0 - Off"}), (std::vector<std::string>{"gain=0_-_Off"}));
}

TEST(Grid, NumbersPointsWhoseNamesAreTooLong) {
    EXPECT_EQ(namesOf({std::string(150, 'n') + "=1,2"}),
              (std::vector<std::string>{"point-0001", "point-0002"}));
}

TEST(Grid, KeepsAPointsAssignmentsInOrder) {
    const Point point = pointsOf({axisOf("b=1"), axisOf("a=2")}).front();
    EXPECT_EQ(point.assignments, (std::vector<std::pair<std::string, std::string>>{{"b", "1"}, {"a", "2"}}));
}

void expectRefused(const std::vector<std::string>& texts, const std::string& mention) {
    try {
        namesOf(texts);
        ADD_FAILURE() << texts.front();
    } catch (const se_output::UsageError& error) {
        EXPECT_NE(std::string(error.what()).find(mention), std::string::npos) << error.what();
    }
}

TEST(Grid, RefusesWhatIsNoAxis) {
    expectRefused({"gain"}, "'gain' is not an axis of a grid");
    expectRefused({"=1"}, "'=1' is not an axis of a grid");
    expectRefused({"gain="}, "'gain=' has an empty value");
    expectRefused({"gain=1,,2"}, "has an empty value");
    expectRefused({"gain=1,2,1"}, "has the value 1 twice");
    expectRefused({"gain=1", "gain=2"}, "'gain' has two axes");
}

TEST(Grid, RefusesMorePointsThanAnybodyCanUse) {
    const std::string ten = "=0,1,2,3,4,5,6,7,8,9";
    expectRefused({"a" + ten, "b" + ten, "c" + ten, "d" + ten, "e=1,2"}, "more than 10000 points");
}

}  // namespace
}  // namespace se_host::sweep

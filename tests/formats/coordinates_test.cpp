// Airfoil coordinate files: both layouts read into the same outline, and
// what is wrong is named with its line.
#include "formats/coordinates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "base/number_text.h"
#include "tools/xfoil_run.h"

namespace tavilo {
namespace {

// A NACA 4412 as a Selig file (scaled by `chord`) or as a Lednicer file.
std::string Selig(const AirfoilOutline& outline, double chord = 1.0) {
  std::string text = outline.name + "\n";
  for (const OutlinePoint& p : outline.points)
    text += ShortestNumberText(p.x * chord) + " " + ShortestNumberText(p.y * chord) + "\n";
  return text;
}

std::string Lednicer(const AirfoilOutline& outline) {
  const size_t le = outline.points.size() / 2;  // NacaOutline's leading edge
  std::string text = outline.name + "\n" + std::to_string(le + 1) + ". " + std::to_string(le + 1) + ".\n\n";
  for (size_t k = le + 1; k-- > 0;)
    text += ShortestNumberText(outline.points[k].x) + " " + ShortestNumberText(outline.points[k].y) + "\n";
  text += "\n";
  for (size_t k = le; k < outline.points.size(); ++k)
    text += ShortestNumberText(outline.points[k].x) + " " + ShortestNumberText(outline.points[k].y) + "\n";
  return text;
}

TEST(Coordinates, BothLayoutsAndAnyChordGiveTheSameOutline) {
  const AirfoilOutline naca = NacaOutline("4412");
  for (const std::string& text : {Selig(naca), Selig(naca, 250.0), Lednicer(naca)}) {
    AirfoilOutline read;
    EXPECT_FALSE(ReadCoordinatesText(read, text).HasError());
    EXPECT_EQ(read.name, "NACA 4412");
    ASSERT_EQ(read.points.size(), naca.points.size());
    for (size_t k = 0; k < naca.points.size(); ++k) {
      EXPECT_NEAR(read.points[k].x, naca.points[k].x, 1e-12);
      EXPECT_NEAR(read.points[k].y, naca.points[k].y, 1e-12);
    }
  }
}

TEST(Coordinates, ShapeIsThicknessAndCamberOfTheSection) {
  AirfoilOutline read;
  ReadCoordinatesText(read, Selig(NacaOutline("4412")));
  const OutlineShape shape = ShapeOf(read);
  EXPECT_NEAR(shape.thickness, 0.12, 0.002);
  EXPECT_NEAR(shape.camber, 0.04, 0.001);
  EXPECT_NEAR(shape.camberAt, 0.40, 0.01);
}

TEST(Coordinates, FaultsAreNamedWithTheirLine) {
  const std::string good = Selig(NacaOutline("2412"));
  std::string badNumber = good;
  badNumber.replace(badNumber.find('\n', 40) + 1, 0, "0.5 0,02\n");
  const size_t badLine =
      static_cast<size_t>(std::count(good.begin(), good.begin() + static_cast<long>(good.find('\n', 40)) + 1, '\n')) +
      1;
  std::string zigzag = "zigzag\n";
  for (int k = 0; k < 30; ++k) zigzag += std::to_string(k % 2) + " " + std::to_string(k % 3) + "\n";
  std::string lednicer = Lednicer(NacaOutline("2412"));
  lednicer.replace(lednicer.find("61."), 3, "62.");
  const struct {
    std::string text;
    Text error;
    int line;
  } cases[] = {
      {badNumber, Text::CoordNotPair, static_cast<int>(badLine)},
      {"few\n1 0\n0.5 0.1\n0 0\n0.5 -0.1\n1 0\n", Text::CoordTooFew, 0},
      {zigzag, Text::CoordNotRound, 0},
      {lednicer, Text::CoordCountsWrong, 2},
  };
  for (const auto& c : cases) {
    AirfoilOutline read;
    const ReadReport report = ReadCoordinatesText(read, c.text);
    ASSERT_EQ(report.diagnostics.size(), 1u) << c.text.substr(0, 20);
    EXPECT_EQ(report.diagnostics[0].messageId, c.error);
    EXPECT_EQ(report.diagnostics[0].line, c.line);
    EXPECT_TRUE(read.points.empty());
  }
}

}  // namespace
}  // namespace tavilo

#include "plot/plot_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

#include "plot/frames.h"
#include "plot/symbol.h"
#include "strings/string_table.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::RecordingSurface;
using testing::SurfaceCall;

PolarPoint Point(double alfa, double cl, double cd, double cm, double tu, double tl) {
  PolarPoint p;
  p.Alfa = alfa;
  p.Cl = cl;
  p.Cd = cd;
  p.Cm = cm;
  p.TU = tu;
  p.TL = tl;
  return p;
}

PolarPtr MakePolar(double reynolds, int points = 3) {
  auto polar = std::make_shared<Polar>();
  polar->ReynoldsNumber = reynolds;
  polar->Selected = true;
  for (int i = 0; i < points; ++i)
    polar->AddPoint(Point(i * 2.0, 0.2 + 0.1 * i, 0.006 + 0.001 * i, -0.05, 0.5 - 0.1 * i, 0.9));
  return polar;
}

// An airfoil with one set per entry of `polarsPerSet`.
AirfoilPtr MakeAirfoil(std::initializer_list<int> polarsPerSet, int points = 3) {
  auto airfoil = std::make_shared<Airfoil>();
  airfoil->Name = "E387";
  int reynolds = 100000;
  for (int count : polarsPerSet) {
    auto set = std::make_shared<Configuration>();
    for (int i = 0; i < count; ++i, reynolds += 100000) set->AddPolar(MakePolar(reynolds, points));
    airfoil->AddConfiguration(set);
  }
  return airfoil;
}

struct Graphs {
  RecordingSurface clCd{800, 600}, clAlfa{400, 300}, cmAlfa{400, 300}, blu{300, 400}, bll{300, 400};
  GraphSurfaces All() { return {&clCd, &clAlfa, &cmAlfa, &blu, &bll}; }
};

// The palette colours set for polars, in order, a repeat of the same colour
// (the legend's return from its shadow tone) counted once.
std::vector<int> PolarColors(const RecordingSurface& surface) {
  std::vector<int> found;
  int last = -1;
  for (const SurfaceCall& call : surface.Calls(CallKind::ForeColor)) {
    if (!call.color.IsPalette()) continue;
    if (call.color.palette != last) found.push_back(call.color.palette);
    last = call.color.palette;
  }
  return found;
}

std::vector<SurfaceCall> LegendTexts(const RecordingSurface& surface) {
  std::vector<SurfaceCall> found;
  for (const SurfaceCall& call : surface.Calls(CallKind::Print))
    if (call.text.rfind("Re=", 0) == 0) found.push_back(call);
  return found;
}

// Lines in a polar's colour: curves and markers.
std::vector<SurfaceCall> PaletteLines(const RecordingSurface& surface) {
  std::vector<SurfaceCall> found;
  for (const SurfaceCall& call : surface.Calls(CallKind::Line))
    if (call.color.IsPalette()) found.push_back(call);
  return found;
}

TEST(PlotData, NoAirfoilDrawsNothing) {
  Graphs g;
  PlotData(nullptr, PlotRanges{}, g.All());
  RefreshPlots(nullptr, PlotRanges{}, g.All());
  for (RecordingSurface* s : {&g.clCd, &g.clAlfa, &g.cmAlfa, &g.blu, &g.bll})
    EXPECT_TRUE(s->calls.empty());
}

TEST(PlotData, AnEmptyAirfoilGetsFramesOnly) {
  Graphs g;
  Airfoil airfoil;
  PlotData(&airfoil, PlotRanges{}, g.All());
  for (RecordingSurface* s : {&g.clCd, &g.clAlfa, &g.cmAlfa, &g.blu, &g.bll}) {
    ASSERT_FALSE(s->calls.empty());
    EXPECT_EQ(s->calls[0].kind, CallKind::Clear);
    EXPECT_TRUE(PaletteLines(*s).empty());
  }
}

TEST(PlotData, NullSurfacesAreSkipped) {
  RecordingSurface cmAlfa;
  GraphSurfaces only;
  only.cmAlfa = &cmAlfa;
  PlotData(MakeAirfoil({2}).get(), PlotRanges{}, only);
  EXPECT_FALSE(PaletteLines(cmAlfa).empty());
}

TEST(PolarAttributes, ColoursCycleThroughOneToFifteenAndMarkersThroughOneToFive) {
  struct Case {
    int ordinal, color, symbol;
  } cases[] = {{1, 1, 1}, {5, 5, 5}, {6, 6, 1}, {15, 15, 5}, {16, 1, 1}, {31, 1, 1}, {30, 15, 5}};
  for (const Case& c : cases) {
    EXPECT_EQ(PolarColorIndex(c.ordinal), c.color) << c.ordinal;
    EXPECT_EQ(PolarSymbolIndex(c.ordinal), c.symbol) << c.ordinal;
  }
}

TEST(PlotData, CountersRunAcrossSetsAndTheSixteenthPolarTakesColourOneAgain) {
  Graphs g;
  PlotData(MakeAirfoil({10, 6}).get(), PlotRanges{}, g.All());
  std::vector<int> expected;
  for (int i = 1; i <= 16; ++i) expected.push_back(i <= 15 ? i : 1);
  EXPECT_EQ(PolarColors(g.clAlfa), expected);
  EXPECT_EQ(PolarColors(g.bll), expected);  // every graph gets the polar's colour
  Color white = Color::Palette(15);  // bright white is used, deliberately
  EXPECT_EQ(white.red + white.green + white.blue, 3 * 255);
}

TEST(PlotData, UntickingAPolarChangesNoOtherPolarsColour) {
  Graphs g;
  AirfoilPtr airfoil = MakeAirfoil({3, 2});
  airfoil->Configuration(1)->Polar(1)->Selected = false;
  airfoil->Configuration(2)->Polar(1)->Selected = false;
  PlotData(airfoil.get(), PlotRanges{}, g.All());
  EXPECT_EQ(PolarColors(g.clCd), (std::vector<int>{2, 3, 5}));
}

TEST(PlotData, TheSixthPolarGetsMarkerOneAgain) {
  Graphs g;
  PlotData(MakeAirfoil({6}, 1).get(), PlotRanges{}, g.All());
  // One point per polar: on the lift-angle graph each polar draws only its
  // marker, so the line counts give the shapes: square 4, diamond 4,
  // triangles 3, octagon 8.
  std::vector<size_t> perPolar;
  int last = -1;
  for (const SurfaceCall& line : PaletteLines(g.clAlfa)) {
    if (line.color.palette != last) perPolar.push_back(0);
    last = line.color.palette;
    ++perPolar.back();
  }
  EXPECT_EQ(perPolar, (std::vector<size_t>{4, 4, 3, 3, 8, 4}));
}

TEST(PlotData, MissingTransitionAndMomentValuesAreNeverPlotted) {
  Graphs g;
  auto airfoil = MakeAirfoil({0});
  auto polar = std::make_shared<Polar>();
  polar->Selected = true;
  polar->AddPoint(Point(0, 0.2, 0.01, -0.05, kNoValue, 0.5));
  polar->AddPoint(Point(2, 0.4, 0.01, -99.0, -99.0, 0.5));  // -99 itself is no value
  polar->AddPoint(Point(4, 0.6, 0.01, -98.9, kNoValue, 0.5));
  polar->AddPoint(Point(6, 0.8, 0.01, -0.07, kNoValue, 0.5));
  airfoil->Configuration(1)->AddPolar(polar);
  PlotData(airfoil.get(), PlotRanges{}, g.All());

  EXPECT_TRUE(PaletteLines(g.blu).empty()) << "no TU at all: the graph stays empty";
  EXPECT_EQ(PaletteLines(g.bll).size(), 3u);
  EXPECT_EQ(PaletteLines(g.clAlfa).size(), 3u + 4 * 4u);  // curve and four squares
  EXPECT_EQ(LegendTexts(g.clCd).size(), 2u) << "the legend entry is still written";
  for (const SurfaceCall& line : PaletteLines(g.cmAlfa)) {
    EXPECT_GT(line.y1, -99.0);
    EXPECT_GT(line.y2, -99.0);
  }
  // -98.9 is a value; the curve joins 0 -> -98.9 -> 6 over the skipped point
  // and markers stand at the three plotted points only.
  auto cm = PaletteLines(g.cmAlfa);
  ASSERT_EQ(cm.size(), 2u + 3 * 4u);
  EXPECT_EQ(cm[0].x1, 0.0);
  EXPECT_EQ(cm[0].x2, 4.0);
  EXPECT_EQ(cm[1].x2, 6.0);
}

TEST(PlotData, CurvesJoinThePointsInStoredOrder) {
  Graphs g;
  PlotData(MakeAirfoil({1}).get(), PlotRanges{}, g.All());
  auto lines = PaletteLines(g.clAlfa);
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0].x1, 0.0);
  EXPECT_EQ(lines[0].y1, 0.2);
  EXPECT_EQ(lines[1].x2, 4.0);
  EXPECT_EQ(lines[1].y2, 0.4);
  auto tu = PaletteLines(g.blu);
  ASSERT_EQ(tu.size(), 2u);
  EXPECT_EQ(tu[0].x1, 0.5);
  EXPECT_EQ(tu[1].x2, 0.3);
}

TEST(Legend, EntriesFormAGridFromTheTopRightOneColumnPerSet) {
  Graphs g;
  PlotRanges ranges;
  PlotData(MakeAirfoil({6, 1}).get(), ranges, g.All());
  RecordingSurface& s = g.clCd;
  double w = s.TextWidth("..Re=1000000..");
  double h = s.TextHeight("\xC3\x9Cg");
  ASSERT_LT(h, 0.0) << "the vertical axis grows upwards";
  auto texts = LegendTexts(s);
  ASSERT_EQ(texts.size(), 14u);  // two passes per polar
  EXPECT_EQ(texts[0].text, "Re= 100000");
  EXPECT_EQ(texts[0].x1, 0.025 - w);
  EXPECT_EQ(texts[0].y1, 1.5);
  // The sixth row: same column, five cell heights below the first row's top,
  // so its text reaches six text heights down.
  EXPECT_EQ(texts[10].text, "Re= 600000");
  EXPECT_EQ(texts[10].x1, texts[0].x1);
  EXPECT_NEAR(texts[10].y1, 1.5 + 5 * h, 1e-12);
  // The second set's column lies one cell width further left.
  EXPECT_EQ(texts[12].text, "Re= 700000");
  EXPECT_NEAR(texts[12].x1, 0.025 - 2 * w, 1e-15);
  EXPECT_EQ(texts[12].y1, 1.5);
}

TEST(Legend, SecondPassIsInsetAndInThePolarsColourWithTheMarkerWhereTheTextEnds) {
  Graphs g;
  PlotData(MakeAirfoil({1}).get(), PlotRanges{}, g.All());
  RecordingSurface& s = g.clCd;
  auto texts = LegendTexts(s);
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_NEAR(texts[1].x1, texts[0].x1 - 0.025 / 100, 1e-15);
  EXPECT_NEAR(texts[1].y1, texts[0].y1 - 0.016 * 2.0, 1e-12);
  EXPECT_EQ(texts[0].color, LegendShadow(Color::Palette(1)));
  EXPECT_EQ(texts[1].color, Color::Palette(1));

  // The legend marker follows the second pass directly: a square of width
  // CdMax / 100 beginning where the text ends, centred half a line down.
  size_t at = 0;
  while (!(s.calls[at].kind == CallKind::Print && s.calls[at].text == texts[1].text &&
           s.calls[at].x1 == texts[1].x1))
    ++at;
  double endX = texts[1].x1 + s.TextWidth(texts[1].text) + 0.025 / 200;
  double middleY = texts[1].y1 + s.TextHeight("0") / 2;
  const SurfaceCall& first = s.calls[at + 1];
  ASSERT_EQ(first.kind, CallKind::Line);
  EXPECT_NEAR(first.x1, endX - 0.8 * 0.025 / 200, 1e-12);
  EXPECT_NEAR(first.x2, endX + 0.8 * 0.025 / 200, 1e-12);
  double halfHeight = 0.8 * (0.025 / 200) * (s.Width() / 0.025) * (2.0 / s.Height());
  EXPECT_NEAR(first.y1, middleY + halfHeight, 1e-12);
}

TEST(PlotData, AWildValueEndsTheRedrawQuietlyAndKeepsWhatWasDrawn) {
  Graphs g;
  AirfoilPtr airfoil = MakeAirfoil({3});
  airfoil->Configuration(1)->Polar(2)->Point(2).Cl = 1e300;
  EXPECT_NO_THROW(PlotData(airfoil.get(), PlotRanges{}, g.All()));
  EXPECT_FALSE(PaletteLines(g.blu).empty()) << "drawn before the wild point";
  std::vector<int> colors = PolarColors(g.clCd);
  EXPECT_EQ(colors, (std::vector<int>{1, 2})) << "the third polar is never reached";
}

TEST(PlotData, ABrokenSetListEndsTheRedrawQuietly) {
  Graphs g;
  Airfoil airfoil;
  airfoil.ResetConfigurations(2);  // a count without sets, as a broken file leaves it
  EXPECT_NO_THROW(PlotData(&airfoil, PlotRanges{}, g.All()));
}

TEST(Symbol, KeepsItsProportionsOnEveryScaleAndReturnsToItsCentre) {
  // The same device size on two very different value ranges.
  RecordingSurface wide(800, 600), narrow(200, 400);
  wide.Scale(0, 1.5, 0.025, -0.5);
  narrow.Scale(-90, 0.4, 90, -0.4);
  for (int index = 1; index <= kSymbolCount; ++index) {
    for (RecordingSurface* s : {&wide, &narrow}) {
      s->calls.clear();
      s->SetCurrentX(s->ScaleLeft() + s->ScaleWidth() / 3);
      s->SetCurrentY(s->ScaleTop() + s->ScaleHeight() / 3);
      double cx = s->CurrentX(), cy = s->CurrentY();
      Symbol(*s, index, 10 * s->ScaleWidth() / s->Width());
      EXPECT_EQ(s->CurrentX(), cx);
      EXPECT_EQ(s->CurrentY(), cy);
    }
    auto a = wide.Calls(CallKind::Line);
    auto b = narrow.Calls(CallKind::Line);
    ASSERT_EQ(a.size(), b.size());
    ASSERT_GE(a.size(), 3u) << index;
    for (size_t k = 0; k < a.size(); ++k) {
      // Device offsets from the centre agree.
      auto dx = [](const RecordingSurface& s, double x) { return (x - s.ScaleLeft() - s.ScaleWidth() / 3) * s.Width() / s.ScaleWidth(); };
      auto dy = [](const RecordingSurface& s, double y) { return (y - s.ScaleTop() - s.ScaleHeight() / 3) * s.Height() / s.ScaleHeight(); };
      EXPECT_NEAR(dx(wide, a[k].x1), dx(narrow, b[k].x1), 1e-9);
      EXPECT_NEAR(dy(wide, a[k].y1), dy(narrow, b[k].y1), 1e-9);
      EXPECT_LE(std::fabs(dx(wide, a[k].x1)), 5.0 + 1e-9);
      EXPECT_LE(std::fabs(dy(wide, a[k].y1)), 5.0 + 1e-9);
    }
    // Each outline is closed.
    EXPECT_EQ(a.front().x1, a.back().x2);
    EXPECT_EQ(a.front().y1, a.back().y2);
  }
}

TEST(Symbol, TrianglesPointTheWayTheyShowOnScreen) {
  RecordingSurface upwards(100, 100), downwards(100, 100);
  upwards.Scale(0, 1, 1, 0);    // y grows upwards
  downwards.Scale(0, 0, 1, 1);  // y grows downwards
  for (RecordingSurface* s : {&upwards, &downwards}) {
    s->SetCurrentX(0.5);
    s->SetCurrentY(0.5);
    Symbol(*s, 3, 0.1);
  }
  EXPECT_GT(upwards.Calls(CallKind::Line)[0].y1, 0.5) << "apex above the centre";
  EXPECT_LT(downwards.Calls(CallKind::Line)[0].y1, 0.5) << "apex above the centre";
}

TEST(Symbol, AnIndexOutsideOneToFiveDrawsNothing) {
  RecordingSurface s;
  for (int index : {0, 6, -1}) Symbol(s, index, 1.0);
  EXPECT_TRUE(s.calls.empty());
}

}  // namespace
}  // namespace tavilo

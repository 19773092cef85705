#include "plot/plot_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "plot/frames.h"
#include "plot/print_page.h"
#include "plot/symbol.h"
#include "support/model_builders.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::MakePoint;
using testing::RecordingSurface;
using testing::SurfaceCall;

// An airfoil with one set per entry of `polarsPerSet`, Re counting up by 100000.
AirfoilPtr MakeAirfoil(std::initializer_list<int> polarsPerSet, int points = 3) {
  auto airfoil = std::make_shared<Airfoil>();
  int reynolds = 100000;
  for (int count : polarsPerSet) {
    auto set = std::make_shared<Configuration>();
    for (int i = 0; i < count; ++i, reynolds += 100000) {
      std::vector<PolarPoint> list;
      for (int k = 0; k < points; ++k)
        list.push_back(MakePoint(k * 2.0, 0.2 + 0.1 * k, 0.006 + 0.001 * k, -0.05, 0.5 - 0.1 * k, 0.9));
      set->AddPolar(testing::MakePolar(reynolds, 0, true, list));
    }
    airfoil->AddConfiguration(set);
  }
  return airfoil;
}

struct Graphs {
  RecordingSurface clCd{800, 600}, clAlfa{400, 300}, cmAlfa{400, 300}, blu{300, 400}, bll{300, 400};
  GraphSurfaces All() { return {&clCd, &clAlfa, &cmAlfa, &blu, &bll}; }
  RecordingSurface& operator[](size_t g) { return *std::array{&clCd, &clAlfa, &cmAlfa, &blu, &bll}[g]; }
};

// The palette colours set for polars, in order, a repeat (the legend's return
// from its shadow tone) counted once.
std::vector<int> PolarColors(const RecordingSurface& surface) {
  std::vector<int> found;
  for (const SurfaceCall& call : surface.Calls(CallKind::ForeColor))
    if (call.color.IsPalette() && (found.empty() || found.back() != call.color.palette))
      found.push_back(call.color.palette);
  return found;
}

// Legend texts, and lines in a polar's colour: curves and markers.
std::vector<SurfaceCall> Where(const RecordingSurface& surface, CallKind kind) {
  std::vector<SurfaceCall> found;
  for (const SurfaceCall& call : surface.Calls(kind))
    if (kind == CallKind::Print ? call.text.starts_with("Re=") : call.color.IsPalette()) found.push_back(call);
  return found;
}
std::vector<SurfaceCall> LegendTexts(const RecordingSurface& surface) { return Where(surface, CallKind::Print); }
std::vector<SurfaceCall> PaletteLines(const RecordingSurface& surface) { return Where(surface, CallKind::Line); }

TEST(PlotData, NoAirfoilDrawsNothingAnEmptyOneOnlyFramesAndAbsentSurfacesAreSkipped) {
  Graphs none, empty;
  PlotData(nullptr, PlotRequest{}, none.All());
  Airfoil airfoil;
  PlotData(&airfoil, PlotRequest{}, empty.All());
  for (size_t g = 0; g < 5; ++g) {
    EXPECT_TRUE(none[g].calls.empty());
    EXPECT_EQ(empty[g].calls.at(0).kind, CallKind::Clear);
    EXPECT_TRUE(PaletteLines(empty[g]).empty());
  }
  RecordingSurface cmAlfa;
  GraphSurfaces only;
  only[Graph::CmAlfa] = &cmAlfa;
  PlotData(MakeAirfoil({2}).get(), PlotRequest{}, only);
  EXPECT_FALSE(PaletteLines(cmAlfa).empty());
}

TEST(PlotData, ColoursCycleOneToFifteenAndMarkersOneToFiveAcrossSets) {
  Graphs g;
  PlotData(MakeAirfoil({10, 6}).get(), PlotRequest{}, g.All());
  EXPECT_EQ(PolarColors(g.clAlfa), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 1}));

  AirfoilPtr unticked = MakeAirfoil({3, 2});
  unticked->Configuration(1)->Polar(1)->Selected = unticked->Configuration(2)->Polar(1)->Selected = false;
  Graphs h;
  PlotData(unticked.get(), PlotRequest{}, h.All());
  EXPECT_EQ(PolarColors(h.clAlfa), (std::vector<int>{2, 3, 5})) << "unticking changes no other colour";

  Graphs single;
  PlotData(MakeAirfoil({6}, 1).get(), PlotRequest{}, single.All());
  // One point per polar draws only its marker: square 4, diamond 4, triangles 3, octagon 8 lines.
  std::map<int, int> perPolar;
  for (const SurfaceCall& line : PaletteLines(single.clAlfa)) ++perPolar[line.color.palette];
  EXPECT_EQ(perPolar, (std::map<int, int>{{1, 4}, {2, 4}, {3, 3}, {4, 3}, {5, 8}, {6, 4}}));
}

TEST(PlotData, MissingTransitionAndMomentValuesAreNeverPlotted) {
  Graphs g;
  auto airfoil = MakeAirfoil({0});
  airfoil->Configuration(1)->AddPolar(testing::MakePolar(
      0, 0, true,
      {MakePoint(0, 0.2, 0.01, -0.05, kNoValue, 0.5), MakePoint(2, 0.4, 0.01, -99.0, -99.0, 0.5),
       MakePoint(4, 0.6, 0.01, -98.9, kNoValue, 0.5), MakePoint(6, 0.8, 0.01, -0.07, kNoValue, 0.5)}));
  PlotData(airfoil.get(), PlotRequest{}, g.All());
  EXPECT_TRUE(PaletteLines(g.blu).empty()) << "no TU at all: the graph stays empty";
  EXPECT_EQ(PaletteLines(g.bll).size(), 3u);
  EXPECT_EQ(PaletteLines(g.clAlfa).size(), 3u + 4 * 4u);  // curve and four squares
  EXPECT_EQ(LegendTexts(g.clCd).size(), 2u) << "the legend entry is still written";
  // -99 itself is no value, -98.9 is: the curve joins 0 -> 4 -> 6.
  auto cm = PaletteLines(g.cmAlfa);
  ASSERT_EQ(cm.size(), 2u + 3 * 4u);
  EXPECT_EQ((std::vector<double>{cm[0].x1, cm[0].x2, cm[1].x2}), (std::vector<double>{0, 4, 6}));
}

TEST(Legend, EntriesFormAGridFromTheTopRightOneColumnPerSet) {
  Graphs g;
  PlotData(MakeAirfoil({6, 1}).get(), PlotRequest{}, g.All());
  RecordingSurface& s = g.clCd;
  double w = s.TextWidth("..Re=1000000..");
  double h = s.TextHeight("\xC3\x9Cg");  // negative: the vertical axis grows upwards
  auto texts = LegendTexts(s);
  ASSERT_EQ(texts.size(), 14u);  // two passes per polar
  const std::tuple<size_t, std::string, double, double> cases[] = {
      {0, "Re= 100000", 0.025 - w, 1.5},
      {10, "Re= 600000", 0.025 - w, 1.5 + 5 * h},  // sixth row, same column
      {12, "Re= 700000", 0.025 - 2 * w, 1.5}};     // the second set's column
  // Each entry is written inset from its cell's corner, first as a halo of
  // the background, then in the polar's colour over it.
  for (const auto& [at, text, x, y] : cases) {
    EXPECT_EQ(texts[at].text, text);
    EXPECT_NEAR(texts[at].x1, x - 0.025 / 100, 1e-15) << text;
    EXPECT_NEAR(texts[at].y1, y - 0.016 * 2.0, 1e-12) << text;
  }
  EXPECT_EQ(std::tuple(texts[1].x1, texts[1].y1, texts[0].color, texts[1].color),
            std::tuple(texts[0].x1, texts[0].y1, kLegendHalo, Color::Palette(1)));
}

TEST(PlotData, AWildValueOrABrokenSetListEndsTheRedrawQuietly) {
  Graphs g;
  AirfoilPtr airfoil = MakeAirfoil({3});
  airfoil->Configuration(1)->Polar(2)->Point(2).Cl = 1e300;
  EXPECT_NO_THROW(PlotData(airfoil.get(), PlotRequest{}, g.All()));
  EXPECT_FALSE(PaletteLines(g.blu).empty()) << "drawn before the wild point";
  EXPECT_EQ(PolarColors(g.clAlfa), (std::vector<int>{1, 2})) << "the third polar is never reached";
  EXPECT_EQ(LegendTexts(g.clCd).size(), 4u) << "the texts are still written, the legend up to the wild polar";
  Airfoil broken;
  broken.ResetConfigurations(2);  // a count without sets, as a broken file leaves it
  EXPECT_NO_THROW(PlotData(&broken, PlotRequest{}, g.All()));
}

// Curves and markers reach the surface in pieces of fixed size; still one curve, a marker on every point.
TEST(PlotData, ALongPolarStaysOneCurveAcrossPieces) {
  std::vector<PolarPoint> list;
  for (int k = 0; k < 1200; ++k) list.push_back(MakePoint(0.01 * k, 0.001 * k, 0.01, -0.05, 0.5, 0.5));
  auto airfoil = MakeAirfoil({0});
  airfoil->Configuration(1)->AddPolar(testing::MakePolar(100000, 0, true, list));
  Graphs g;
  PlotData(airfoil.get(), PlotRequest{}, g.All());
  auto lines = PaletteLines(g.clAlfa);
  ASSERT_EQ(lines.size(), 1199u + 1200 * 4u);  // the curve, then a square per point
  int breaks = 0;
  for (size_t k = 1; k < 1199; ++k) breaks += lines[k].x1 != lines[k - 1].x2 || lines[k].y1 != lines[k - 1].y2;
  EXPECT_EQ(std::make_pair(breaks, lines[1198].x2), std::make_pair(0, 0.01 * 1199));
  EXPECT_EQ(PaletteLines(g.bll).size(), 1199u);
}

TEST(ReadableColors, OnlyTheSeventhAndFifteenthPolarChangeTheirShade) {
  AirfoilPtr airfoil = MakeAirfoil({15});
  for (bool readable : {false, true}) {
    Graphs g;
    PlotData(airfoil.get(), PlotRequest{.overlays = {}, .readableColors = readable}, g.All());
    RecordingSurface page;  // its curves and the footer's samples alike
    PrintPage(*airfoil, PageRequest{.ranges = {}, .options = {}, .readableColors = readable}, page);
    for (const RecordingSurface* s : {&g.clAlfa, &page}) {
      std::string seen;  // which of palette 6, 7, 15, silver and white are drawn
      for (Color c : {Color::Palette(6), Color::Palette(7), Color::Palette(15), kReadableSilver, kReadableWhite})
        seen += s->Lines(c).empty() ? '-' : '+';
      EXPECT_EQ(seen, readable ? "+--++" : "+++--");
    }
  }
}

// Its scale, grid, drag labels, title and legend, the title in the request's language.
TEST(PlotViews, AViewOfItsOwnMovesThatGraphAlone) {
  AirfoilPtr airfoil = MakeAirfoil({1});
  Graphs defaults, zoomed;
  PlotData(airfoil.get(), PlotRequest{}, defaults.All());
  PlotRequest request;
  request.views[Graph::ClAlfa] = {-5, 1.0, 20, 0.2};
  request.views[Graph::ClCd] = {0.04, 2.0, 0.06, 0.0};
  request.language = Language::German;
  PlotData(airfoil.get(), request, zoomed.All());
  for (size_t g = 2; g < 5; ++g) EXPECT_EQ(zoomed[g].calls, defaults[g].calls) << g;

  const auto scale = zoomed.clAlfa.Calls(CallKind::Scale).at(0);
  EXPECT_EQ((GraphView{scale.x1, scale.y1, scale.x2, scale.y2}), request.views[Graph::ClAlfa]);
  std::vector<double> vertical;
  for (const SurfaceCall& line : zoomed.clAlfa.Lines(kGridColor)) {
    if (line.x1 == line.x2)
      vertical.push_back(line.x1);
    else
      EXPECT_TRUE(line.y1 > 0.2 && line.y1 < 1.0) << line.y1;
  }
  EXPECT_EQ(vertical, (std::vector<double>{0, 5, 10, 15})) << "every 5 degrees, short of the border";

  // Without their halos; a drag axis 0.02 wide is labelled every 0.005, the legend hangs from the top right.
  std::string joined;
  for (const SurfaceCall& text : zoomed.clCd.Calls(CallKind::Print, &kAxisColor)) joined += text.text + "|";
  EXPECT_EQ(joined, "0.045|0.050|0.055|Profil: |");
  const SurfaceCall legend = LegendTexts(zoomed.clCd).at(1);
  EXPECT_NEAR(legend.x1, 0.06 - zoomed.clCd.TextWidth("..Re=1000000..") - 0.02 / 100, 1e-15);
  EXPECT_NEAR(legend.y1, 2.0 - 0.016 * 2.0, 1e-15);
}

// Every text (numbers, title, legend) comes after every line of a polar or of an overlay.
TEST(Overlays, AreJoinedAfterThePolarsInTheirColourUnderEveryText) {
  const Color green = Color::Rgb(20, 160, 40);
  const std::vector<PolarPoint> points = {MakePoint(-2, 0.1, 0.008, -99.0, 0.6, 0.4),
                                          MakePoint(3, 0.5, 0.009, -99.0, 0.5, kNoValue),
                                          MakePoint(8, 0.9, 0.012, -99.5, 0.4, 0.6)};
  PlotRequest request;
  request.overlays.push_back({points, green});
  request.axisNumbers = true;
  Graphs g;
  PlotData(MakeAirfoil({2}).get(), request, g.All());
  // Without markers or missing values: no Cm at all, TL joins the first point to the third.
  const size_t overlayLines[] = {2, 2, 0, 2, 1};
  for (size_t k = 0; k < 5; ++k) {
    const RecordingSurface& surface = g[k];
    EXPECT_EQ(surface.Lines(green).size(), overlayLines[k]) << k;
    std::string order;  // 'p' a polar's line, 'o' the overlay's, 't' a text
    for (const SurfaceCall& call : surface.calls) {
      if (call.kind == CallKind::Print) order += 't';
      if (call.kind == CallKind::Line && call.color.IsPalette()) order += 'p';
      if (call.kind == CallKind::Line && call.color == green) order += 'o';
    }
    const std::string lines = order.substr(0, order.find('t')), rest = order.substr(lines.size());
    EXPECT_EQ(lines.find("op"), std::string::npos) << k;
    ASSERT_FALSE(rest.empty()) << k << " has numbers";
    // After the first text only the legend's markers: a square and a diamond.
    EXPECT_EQ(std::count(rest.begin(), rest.end(), 'p'), k == 0 ? 8 : 0) << k;
    EXPECT_EQ(rest.find('o'), std::string::npos) << k;
  }
  EXPECT_EQ(LegendTexts(g.clCd).size(), 4u) << "two polars in two passes, nothing for the overlay";
}

// A 10-unit marker on two very different ranges: the same device offsets, within its size, closed.
TEST(Symbol, KeepsItsProportionsOnEveryScaleAndReturnsToItsCentre) {
  RecordingSurface wide(800, 600), narrow(200, 400), none;
  wide.Scale(0, 1.5, 0.025, -0.5);
  narrow.Scale(-90, 0.4, 90, -0.4);
  for (int index = 1; index <= kSymbolCount; ++index) {
    std::vector<double> offsets[2];
    for (RecordingSurface* s : {&wide, &narrow}) {
      s->calls.clear();
      const double cx = s->ScaleLeft() + s->ScaleWidth() / 3, cy = s->ScaleTop() + s->ScaleHeight() / 3;
      s->SetCurrentX(cx), s->SetCurrentY(cy);
      Symbol(*s, index, 10 * s->ScaleWidth() / s->Width());
      EXPECT_EQ(std::make_pair(s->CurrentX(), s->CurrentY()), std::make_pair(cx, cy));
      const std::vector<SurfaceCall> lines = s->Calls(CallKind::Line);
      for (const SurfaceCall& line : lines)
        for (double d :
             {(line.x1 - cx) * s->Width() / s->ScaleWidth(), (line.y1 - cy) * s->Height() / s->ScaleHeight()})
          offsets[s == &narrow].push_back(std::round(d * 1e6) / 1e6);
      EXPECT_EQ(lines.front().x1, lines.back().x2) << "each outline is closed";
    }
    for (double d : offsets[0]) EXPECT_LE(std::fabs(d), 5.0 + 1e-9) << index;
    EXPECT_EQ(offsets[0], offsets[1]) << index;
    EXPECT_GE(offsets[0].size(), 6u) << index;
  }
  for (int index : {0, 6, -1}) Symbol(none, index, 1.0);
  EXPECT_TRUE(none.calls.empty());
}

}  // namespace
}  // namespace tavilo

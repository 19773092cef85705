#include "plot/print_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/errors.h"
#include "plot/frames.h"
#include "plot/page.h"
#include "plot/plot_data.h"
#include "plot/print_axes.h"
#include "support/model_builders.h"
#include "support/recording_surface.h"

namespace tavilo {
namespace {

using testing::CallKind;
using testing::MakePoint;
using testing::MakePolar;
using testing::RecordingSurface;
using testing::SurfaceCall;

// A sweep from -20 to 20 degrees that runs past every default range: lift
// to 1.8, drag to 0.05.
PolarPtr Sweep(double reynolds, bool ticked) {
  std::vector<PolarPoint> points;
  for (double alfa = -20; alfa <= 20; alfa += 1) {
    const double cl = 0.09 * (alfa + 2);
    points.push_back(
        MakePoint(alfa, cl, 0.006 + 0.014 * cl * cl, -0.05 - 0.002 * alfa, 0.3 + alfa / 100, 0.7 - alfa / 100));
  }
  return MakePolar(reynolds, 0.1, ticked, points, "free");
}

Airfoil Airfoil(int polars, int unticked = -1) {
  tavilo::Airfoil airfoil;
  airfoil.Name = "NACA 4412";
  auto set = std::make_shared<Configuration>();
  set->Name = "clean";
  for (int p = 0; p < polars; ++p) set->AddPolar(Sweep(100000.0 * (p + 1), p != unticked));
  airfoil.AddConfiguration(set);
  return airfoil;
}

struct Printed {
  RecordingSurface surface;
  PageLayout layout;

  Printed(const tavilo::Airfoil& airfoil, const PageRequest& request)
      : surface(request.paper.width / 25.4 * 72, request.paper.height / 25.4 * 72) {
    PrintPage(airfoil, request, surface);
    layout = LayOutPage(airfoil, request, surface);
  }

  std::vector<SurfaceCall> Texts() const { return surface.Calls(CallKind::Print); }
  int Count(const std::string& prefix) const {
    int count = 0;
    for (const SurfaceCall& text : Texts()) count += text.text.rfind(prefix, 0) == 0;
    return count;
  }
};

PageRect TextRect(const SurfaceCall& text) { return {text.x1, text.y2, text.x2, text.y1}; }

PageRect Extent(const SurfaceCall& line) {
  return {std::min(line.x1, line.x2), std::min(line.y1, line.y2), std::max(line.x1, line.x2),
          std::max(line.y1, line.y2)};
}

PageRect Grown(const PageRect& r, double by) { return {r.left - by, r.bottom - by, r.right + by, r.top + by}; }

const PlotRanges kWidest{3.0, -1.5, 2.0, 90.0};
const PlotRanges kNarrowest{0.5, 0.0, 0.01, 10.0};

// The one text that reads `text`.
const SurfaceCall* Find(const std::vector<SurfaceCall>& texts, const std::string& text) {
  const SurfaceCall* found = nullptr;
  for (const SurfaceCall& call : texts)
    if (call.text == text) {
      EXPECT_EQ(found, nullptr) << text << " twice";
      found = &call;
    }
  EXPECT_NE(found, nullptr) << text;
  return found;
}

TEST(PrintedPage, GraphsFillTheirBoxesTitledWithTextsOutsideTheFramesAndNoTwoTextsMeet) {
  const struct {
    PlotRanges ranges;
    PaperSize paper;
    LegendCorner corner;
    double angleLabelStep;  // widened only where 5 degrees would crowd the recorder's wide type
  } cases[] = {{PlotRanges{}, kA4Landscape, LegendCorner::LowerRight, 5},
               {PlotRanges{}, kLetterLandscape, LegendCorner::UpperLeft, 10},
               {kWidest, kA4Landscape, LegendCorner::UpperLeft, 30},
               {kWidest, kLetterLandscape, LegendCorner::LowerRight, 45},
               {kNarrowest, kA4Landscape, LegendCorner::LowerRight, 5}};
  const tavilo::Airfoil airfoil = Airfoil(4);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ranges.alfaMax + c.paper.width);
    PageRequest request{c.ranges, {true, true, c.corner}, c.paper, Language::English};
    Printed page(airfoil, request);
    const PageRect paper{kPageMargin, kPageMargin, c.paper.width - kPageMargin, c.paper.height - kPageMargin};
    const std::vector<SurfaceCall> texts = page.Texts();
    EXPECT_EQ(page.layout.graphs[Graph::ClAlfa].labelStepX, c.angleLabelStep);
    for (Graph g : kGraphs) {
      const PlacedGraph& graph = page.layout.graphs[g];
      EXPECT_TRUE(paper.Contains(graph.box));
      EXPECT_TRUE(graph.box.Contains(graph.plot));
      // Each axis stretched to its frame, whatever the ranges.
      EXPECT_GT(graph.plot.Width(), 0.6 * graph.box.Width());
      EXPECT_GT(graph.plot.Height(), 0.6 * graph.box.Height());
      // Marks to scale: the small graphs' markers are smaller.
      EXPECT_TRUE(g == Graph::ClCd || graph.markUnit < page.layout.graphs[Graph::ClCd].markUnit);
      const SurfaceCall* title = Find(texts, std::string(Describe(g).title));
      if (!title) continue;
      EXPECT_TRUE(graph.box.Contains(TextRect(*title)));
      EXPECT_GE(TextRect(*title).bottom, graph.plot.top);
    }
    // Every polar line lies in a graph, or is a sample in the legend or footer.
    std::vector<PageRect> allowed = {page.layout.footer.area, page.layout.legend.area};
    for (const PlacedGraph& graph : page.layout.graphs) allowed.push_back(graph.plot);
    for (int polar = 1; polar <= 4; ++polar) {
      for (const SurfaceCall& line : page.surface.Lines(Color::Palette(polar))) {
        bool inside = false;
        for (const PageRect& area : allowed) inside = inside || Grown(area, 1.5).Contains(Extent(line));
        ASSERT_TRUE(inside) << line.x1 << "," << line.y1 << " " << line.x2 << "," << line.y2;
      }
    }
    // Numbers and titles stand outside every frame; only the legend is inside one.
    for (size_t a = 0; a < texts.size(); ++a) {
      const PageRect text = TextRect(texts[a]);
      EXPECT_TRUE(Grown(paper, 0.01).Contains(text)) << texts[a].text;
      for (const PlacedGraph& graph : page.layout.graphs)
        EXPECT_TRUE(page.layout.legend.area.Contains(text) || !Grown(graph.plot, -0.05).Overlaps(text))
            << texts[a].text;
      for (size_t b = a + 1; b < texts.size(); ++b)
        EXPECT_FALSE(Grown(text, -0.05).Overlaps(TextRect(texts[b]))) << texts[a].text << " / " << texts[b].text;
    }
    // Positive moments up, as on screen.
    const SurfaceCall *up = Find(texts, "0.40"), *down = Find(texts, "-0.40");
    EXPECT_GT(up ? up->y1 : 0, down ? down->y1 : 0);
  }
}

TEST(PrintedPage, TheGridSwitchAndTheLegendCorner) {
  const tavilo::Airfoil airfoil = Airfoil(3);
  auto gridLines = [](const Printed& page) {
    const std::vector<SurfaceCall> lines = page.surface.Lines(kPageGridColor);
    return std::count_if(lines.begin(), lines.end(), [](auto& line) { return line.lineKind == LineKind::Plain; });
  };
  PageRequest request;
  EXPECT_EQ(gridLines(Printed(airfoil, request)), 0);
  request.options.grid = true;
  EXPECT_GT(gridLines(Printed(airfoil, request)), 100);

  // Off, the Reynolds numbers stand in the footer alone.
  EXPECT_EQ(Printed(airfoil, request).Count("Re="), 3);
  request.options.legend = true;
  for (LegendCorner corner : {LegendCorner::LowerRight, LegendCorner::UpperLeft}) {
    request.options.legendCorner = corner;
    Printed page(airfoil, request);
    const PageRect& plot = page.layout.graphs[Graph::ClCd].plot;
    const double middleX = (plot.left + plot.right) / 2, middleY = (plot.bottom + plot.top) / 2;
    int inLegend = 0;
    for (const SurfaceCall& text : page.Texts()) {
      if (text.text.rfind("Re=", 0) != 0 || !plot.Contains(TextRect(text))) continue;
      ++inLegend;
      const bool upperLeft = text.x2 < middleX && text.y2 > middleY;
      const bool lowerRight = text.x1 > middleX && text.y1 < middleY;
      EXPECT_TRUE(corner == LegendCorner::UpperLeft ? upperLeft : lowerRight) << text.text;
    }
    EXPECT_EQ(inLegend, 3);
    // On white, after every curve: only samples follow its backing.
    const auto& calls = page.surface.calls;
    auto backing = std::find_if(calls.begin(), calls.end(), [&](const SurfaceCall& call) {
      return call.kind == CallKind::Line && call.lineKind == LineKind::Box &&
             Extent(call).Contains(page.layout.legend.area) && Grown(page.layout.legend.area, 1).Contains(Extent(call));
    });
    ASSERT_NE(backing, calls.end());
    for (auto call = backing; call != calls.end(); ++call) {
      EXPECT_TRUE(call->kind != CallKind::Line || !call->color.IsPalette() ||
                  Grown(page.layout.legend.area, 1).Contains(Extent(*call)) ||
                  page.layout.footer.area.Contains(Extent(*call)));
    }
  }
}

TEST(PrintedPage, OnlyTickedPolarsAreDrawnAndListed) {
  const tavilo::Airfoil airfoil = Airfoil(3, /*unticked=*/1);
  Printed page(airfoil, PageRequest{});
  for (int polar = 1; polar <= 3; ++polar) {
    EXPECT_EQ(page.surface.Lines(Color::Palette(polar)).empty(), polar == 2) << polar;
    EXPECT_EQ(page.Count("Re= " + std::to_string(polar) + "00000"), polar == 2 ? 0 : 1) << polar;
  }
  EXPECT_EQ(page.Count("NACA 4412"), 0);  // the heading says more than the name
  EXPECT_EQ(page.Count("Airfoil: NACA 4412"), 1);
}

TEST(PrintedPage, ManyPolarsFlowIntoColumnsAndEndInACountOfTheRest) {
  for (const auto& c : {std::pair{2, false}, {30, false}, {400, true}}) {
    PageRequest request;
    request.options.legend = true;
    Printed page(Airfoil(c.first), request);
    for (const ListBlock* list : {&page.layout.footer, &page.layout.legend}) {
      EXPECT_GE(list->points, kMinListPoints);
      EXPECT_EQ(list->total, c.first);
      EXPECT_EQ(page.Count("+ " + std::to_string(list->total - list->shown) + " more"), list->shown < list->total)
          << c.first;
    }
    EXPECT_EQ(page.layout.footer.shown < c.first, c.second) << c.first;
    EXPECT_EQ(page.Count("+ "), c.second ? 2 : (page.layout.legend.shown < c.first ? 1 : 0)) << c.first;
    EXPECT_TRUE(c.first != 30 || page.layout.footer.columns > 1);
  }
  PageRequest german;
  german.language = Language::German;
  EXPECT_EQ(Printed(Airfoil(400), german).Count("+ "), 1);
  EXPECT_EQ(Printed(Airfoil(0), german).Count("Keine Polare ist aktiv."), 1);
}

TEST(PageMappings, NominalScalesTimesTheirFactors) {
  const PageFactors unit, half{0.5f, 2.0f};
  const struct {
    float (*map)(float, const PageFactors&);
    float value;
    float unitMM, halfMM;
  } cases[] = {
      {AlfaMM, 10, 25, 12.5f},    {ClMM, 1, 50, 25},      {CmMM, 0.1f, -25, -12.5f},  // positive moments go down
      {XcMM, 1, 50, 25},          {CdMM, 0.01f, 50, 100},                             // drag takes kd, not k
      {CdMM, 2.0f, 10000, 20000},
  };
  for (const auto& c : cases) {
    EXPECT_FLOAT_EQ(c.map(c.value, unit), c.unitMM) << c.value;
    EXPECT_FLOAT_EQ(c.map(c.value, half), c.halfMM) << c.value;
  }
  // Divide before multiplying: 0.3 / 0.1 is 2.9999999999999996 in double, unlike 0.3 * 50.
  EXPECT_EQ(ClMM(0.3f, unit), static_cast<float>((double(0.3f) / 0.1) * 5));
  EXPECT_EQ(CdMM(0.007f, unit), static_cast<float>((double(0.007f) / 0.001) * 5));
  EXPECT_THROW(ClMM(std::numeric_limits<float>::max(), unit), OverflowError);
  EXPECT_THROW(CdMM(std::numeric_limits<float>::max(), unit), OverflowError);
}

TEST(PageRectangle, MovedItFillsItsNewPlaceAtItsSize) {
  RecordingSurface surface;
  Rectangle box{10, 20, 30, -5};
  box.Translate(3, -4);
  box.Fill(surface, Color::Rgb(255, 255, 255));
  const SurfaceCall drawn = surface.Calls(CallKind::Line).at(0);
  EXPECT_EQ((std::vector<double>{drawn.x1, drawn.y1, drawn.x2, drawn.y2, double(drawn.lineKind == LineKind::Box)}),
            (std::vector<double>{23, 6, 53, 1, 1}));
}

// A page of 200 x 280 mm with its vertical axis growing upwards, the origin
// at (100, 150), a frame from (60, 90) to (200, 200).
struct Page {
  RecordingSurface surface{800, 1120};
  Page() { surface.Scale(0, 280, 200, 0); }
  PageAxis Axis(double low, double high, bool horizontal = true) {
    return PageAxis{&surface, 100, 150, {}, low, high, 100, 200, 0, 0, horizontal ? 90.0 : 60.0};
  }
  std::vector<SurfaceCall> GridLines() { return surface.Lines(kPageGridColor); }
  std::vector<std::string> Labels() {
    std::vector<std::string> texts;
    for (const SurfaceCall& c : surface.Calls(CallKind::Print)) texts.push_back(c.text);
    return texts;
  }
};

// Labels and titles stand outside the frame edge, wherever the origin is.
TEST(PrintedAxes, GridCountsAndLabelsOutsideTheFrame) {
  const std::vector<std::string> degrees = {"-10\u00B0", "-5\u00B0", "0\u00B0", "5\u00B0", "10\u00B0", "Alfa"};
  const struct {
    void (*draw)(const PageAxis&, bool, bool);
    bool horizontal;
    double low, high, gridStep;
    bool skipZero, grid;
    size_t gridLines;
    std::vector<std::string> labels;
  } cases[] = {
      // clang-format off
      {AlfaAxis, true, -10, 10, 0, false, true, 21, degrees},
      {AlfaAxis, true, -10, 10, 5, false, true, 5, degrees},
      // 21 steps of 0.1 less the one at 0, despite rounding.
      {ClAxis, false, -0.5, 1.5, 0, true, true, 20, {"-0.5", "0.0", "0.5", "1.0", "1.5", "Cl"}},
      {CdAxis, true, 0, 0.02, 0, false, true, 21, {"0.000", "0.005", "0.010", "0.015", "0.020", "Cd"}},
      {XcAxis, true, 0, 1, 0, false, false, 0, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0", "x/c"}},
      // Hundredths first, from the top down, then the tenths.
      {CmAxis, false, -0.1, 0.1, 0, false, true, 11,
       {"0.08", "0.06", "0.04", "0.02", "-0.02", "-0.04", "-0.06", "-0.08", "0.10", "0.00", "-0.10", "Cm"}},
      // clang-format on
  };
  for (const auto& c : cases) {
    Page page;
    PageAxis axis = page.Axis(c.low, c.high, c.horizontal);
    axis.gridStep = c.gridStep;
    c.draw(axis, c.skipZero, c.grid);
    EXPECT_EQ(page.GridLines().size(), c.gridLines) << c.labels.back();
    for (const SurfaceCall& line : page.GridLines()) EXPECT_TRUE(!c.skipZero || std::fabs(line.y1 - 150) > 0.5);
    EXPECT_EQ(page.Labels(), c.labels);
    const std::vector<SurfaceCall> texts = page.surface.Calls(CallKind::Print);
    for (const SurfaceCall& text : texts) {
      EXPECT_TRUE(c.horizontal ? text.y1 <= axis.labelEdge - kPageLabelGap : text.x2 <= axis.labelEdge - kPageLabelGap)
          << text.text;
      // A vertical axis's title never stands on a label's line.
      EXPECT_TRUE(c.horizontal || &text == &texts.back() || std::fabs(text.y1 - texts.back().y1) >= 1) << text.text;
    }
  }
  Page page;
  AlfaAxis(page.Axis(-10, 10), false, true);
  auto widths = page.surface.Calls(CallKind::DrawWidth);
  EXPECT_EQ(widths.at(0).value * 10 + widths.at(1).value, 21);
  const SurfaceCall axisLine = page.surface.Calls(CallKind::Line)[0];
  EXPECT_EQ((std::vector<double>{axisLine.x1, axisLine.x2, axisLine.y1}), (std::vector<double>{75, 125, 150}));
  EXPECT_EQ(page.GridLines()[0].y1 + page.GridLines()[0].y2, 300);
  EXPECT_EQ(page.surface.ForeColor(), kAxisColor);
}

}  // namespace
}  // namespace tavilo

#include "plot/print_page.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

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
    points.push_back(MakePoint(alfa, cl, 0.006 + 0.014 * cl * cl, -0.05 - 0.002 * alfa, 0.3 + alfa / 100,
                               0.7 - alfa / 100));
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

PageRect Grown(const PageRect& r, double by) { return {r.left - by, r.bottom - by, r.right + by, r.top + by}; }

const PlotRanges kWidest{3.0, -1.5, 2.0, 90.0};
const PlotRanges kNarrowest{0.5, 0.0, 0.01, 10.0};

TEST(PrintedPage, GraphsStayInTheirBoxesCurvesInTheirGraphsAndNoTwoTextsMeet) {
  const struct {
    PlotRanges ranges;
    PaperSize paper;
    LegendCorner corner;
  } cases[] = {
      {PlotRanges{}, kA4Landscape, LegendCorner::LowerRight},
      {PlotRanges{}, kLetterLandscape, LegendCorner::UpperLeft},
      {kWidest, kA4Landscape, LegendCorner::UpperLeft},
      {kWidest, kLetterLandscape, LegendCorner::LowerRight},
      {kNarrowest, kA4Landscape, LegendCorner::LowerRight},
  };
  const tavilo::Airfoil airfoil = Airfoil(4);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ranges.alfaMax + c.paper.width);
    PageRequest request{c.ranges, {true, true, c.corner}, c.paper, Language::English};
    Printed page(airfoil, request);
    const PageRect paper{kPageMargin, kPageMargin, c.paper.width - kPageMargin, c.paper.height - kPageMargin};
    for (const PlacedGraph& graph : page.layout.graphs) {
      EXPECT_TRUE(paper.Contains(graph.box));
      EXPECT_TRUE(graph.box.Contains(graph.plot));
    }
    // Every polar line lies in a graph, or is a sample in the legend or footer.
    std::vector<PageRect> allowed = {page.layout.footer.area, page.layout.legend.area};
    for (const PlacedGraph& graph : page.layout.graphs) allowed.push_back(graph.plot);
    for (int polar = 1; polar <= 4; ++polar) {
      for (const SurfaceCall& line : page.surface.Lines(Color::Palette(polar))) {
        const PageRect extent{std::min(line.x1, line.x2), std::min(line.y1, line.y2), std::max(line.x1, line.x2),
                              std::max(line.y1, line.y2)};
        bool inside = false;
        for (const PageRect& area : allowed) inside = inside || Grown(area, 1.5).Contains(extent);
        ASSERT_TRUE(inside) << line.x1 << "," << line.y1 << " " << line.x2 << "," << line.y2;
      }
    }
    const std::vector<SurfaceCall> texts = page.Texts();
    for (size_t a = 0; a < texts.size(); ++a) {
      EXPECT_TRUE(Grown(paper, 0.01).Contains(TextRect(texts[a]))) << texts[a].text;
      for (size_t b = a + 1; b < texts.size(); ++b)
        EXPECT_FALSE(Grown(TextRect(texts[a]), -0.05).Overlaps(TextRect(texts[b])))
            << texts[a].text << " / " << texts[b].text;
    }
  }
}

TEST(PrintedPage, AngleLabelsWidenOnlyWhereTheFiveDegreeStepWouldCrowd) {
  const tavilo::Airfoil airfoil = Airfoil(1);
  PageRequest request;
  EXPECT_EQ(Printed(airfoil, request).layout.graphs[Graph::ClAlfa].labelStepX, 5);
  request.ranges = kWidest;
  const double wide = Printed(airfoil, request).layout.graphs[Graph::ClAlfa].labelStepX;
  EXPECT_TRUE(wide == 10 || wide == 15 || wide == 30) << wide;
}

TEST(PrintedPage, TheGridSwitchAndTheLegendCorner) {
  const tavilo::Airfoil airfoil = Airfoil(3);
  auto gridLines = [](const Printed& page) {
    int count = 0;
    for (const SurfaceCall& line : page.surface.Lines(kPageGridColor)) count += line.lineKind == LineKind::Plain;
    return count;
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
  }
}

TEST(PrintedPage, OnlyTickedPolarsAreDrawnAndListed) {
  const tavilo::Airfoil airfoil = Airfoil(3, /*unticked=*/1);
  Printed page(airfoil, PageRequest{});
  EXPECT_FALSE(page.surface.Lines(Color::Palette(1)).empty());
  EXPECT_TRUE(page.surface.Lines(Color::Palette(2)).empty());
  EXPECT_FALSE(page.surface.Lines(Color::Palette(3)).empty());
  EXPECT_EQ(page.Count("Re= 100000"), 1);
  EXPECT_EQ(page.Count("Re= 200000"), 0);
  EXPECT_EQ(page.Count("Re= 300000"), 1);
  EXPECT_EQ(page.Count("NACA 4412"), 0);  // the heading says more than the name
  EXPECT_EQ(page.Count("Airfoil: NACA 4412"), 1);
}

TEST(PrintedPage, ManyPolarsFlowIntoColumnsAndEndInACountOfTheRest) {
  const struct {
    int polars;
    bool overflows;
  } cases[] = {{2, false}, {30, false}, {400, true}};
  for (const auto& c : cases) {
    PageRequest request;
    request.options.legend = true;
    Printed page(Airfoil(c.polars), request);
    for (const ListBlock* list : {&page.layout.footer, &page.layout.legend}) {
      EXPECT_GE(list->points, kMinListPoints);
      EXPECT_EQ(list->total, c.polars);
      if (list->shown < list->total) {
        EXPECT_EQ(page.Count("+ " + std::to_string(list->total - list->shown) + " more"), 1) << c.polars;
      }
    }
    EXPECT_EQ(page.layout.footer.shown < c.polars, c.overflows) << c.polars;
    EXPECT_EQ(page.Count("+ "), c.overflows ? 2 : (page.layout.legend.shown < c.polars ? 1 : 0)) << c.polars;
    if (c.polars == 30) {
      EXPECT_GT(page.layout.footer.columns, 1);
    }
  }
  PageRequest german;
  german.language = Language::German;
  EXPECT_EQ(Printed(Airfoil(400), german).Count("+ "), 1);
  EXPECT_EQ(Printed(Airfoil(0), german).Count("Keine Polare ist aktiv."), 1);
}

}  // namespace
}  // namespace tavilo

#include "plot/print_page.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "plot/frames.h"
#include "plot/plot_data.h"
#include "plot/print_axes.h"
#include "plot/symbol.h"

namespace tavilo {

namespace {

constexpr double kBoxGap = 6;           // between graph boxes, mm
constexpr double kBlockGap = 4;         // between heading, graphs and footer
constexpr double kFooterShare = 0.25;   // of the paper's height, at most
constexpr double kLegendShare = 0.45;   // of the lift-drag plot's height and width, at most
constexpr double kLabelSpacing = 1.5;   // least free space between two tick labels
constexpr double kGridSpacing = 1.2;    // least distance of two grid lines
constexpr double kFullMarkGraph = 150;  // the frame's shorter side from which markers keep full size
constexpr double kFieldGap = 2.5;       // between the fields of a footer row
constexpr double kColumnGap = 6;        // between columns of a list
constexpr double kSampleLength = 7;     // the curve sample before a list entry
constexpr double kLegendInset = 1.5;    // legend from the plot's edges
constexpr double kMaxSetName = 50;      // the widest set and polar names a row gives room to
constexpr double kMaxPolarName = 30;
constexpr Color kBlack = kAxisColor;
constexpr Color kWhite = Color::Rgb(255, 255, 255);
constexpr Color kRuleColor = Color::Rgb(160, 160, 160);  // above the footer

using Mapping = float (*)(float, const PageFactors&);

// One axis of a graph: the quantity, its range and how its labels read.
struct AxisPlan {
  Mapping map;
  double low, high;
  const char* pattern;
  const char* suffix;
  const char* title;
  std::vector<double> labelSteps;  // candidates, the axis's own first
  std::vector<double> gridSteps;   // likewise
  void (*draw)(const PageAxis&, bool, bool);
};

struct GraphPlan {
  AxisPlan x, y;
  std::string_view title;
};

std::vector<double> Multiples(double base, std::initializer_list<double> factors) {
  std::vector<double> steps;
  for (double factor : factors) steps.push_back(base * factor);
  return steps;
}

AxisPlan PlanOf(AxisQuantity quantity, const PlotRanges& r) {
  switch (quantity) {
    case AxisQuantity::Cd: {
      const double label = DragLabelStep(r.cdMax);
      std::vector<double> grid = Multiples(label, {1, 2, 5, 10});
      grid.insert(grid.begin(), DragGridStep(r.cdMax));
      return {CdMM, 0, r.cdMax, "0.000", "", "Cd", Multiples(label, {1, 2, 5, 10, 20, 50, 100}), grid, CdAxis};
    }
    case AxisQuantity::Cl: return {ClMM, r.clMin, r.clMax, "0.0", "", "Cl", {0.5, 1.0, 1.5}, {0.1, 0.5}, ClAxis};
    case AxisQuantity::Alfa:
      return {AlfaMM, r.AlfaMin(), r.alfaMax, "0", "\u00B0", "Alfa", {5, 10, 15, 30, 45, 90}, {1, 5, 15}, AlfaAxis};
    // A moment label step below 0.1 stands for the axis's own two loops.
    case AxisQuantity::Cm: return {CmMM, kCmMin, kCmMax, "0.00", "", "Cm", {0.02, 0.1, 0.2, 0.4}, {0.02, 0.1}, CmAxis};
    case AxisQuantity::Xc: return {XcMM, 0, 1, "0.0", "", "x/c", {0.2, 0.5, 1.0}, {0.1, 0.2}, XcAxis};
  }
  return PlanOf(AxisQuantity::Xc, r);
}

PerGraph<GraphPlan> GraphPlans(const PlotRanges& r) {
  PerGraph<GraphPlan> plans;
  for (Graph graph : kGraphs) {
    const GraphDescription& d = Describe(graph);
    plans[graph] = {PlanOf(d.x, r), PlanOf(d.y, r), d.title};
  }
  return plans;
}

double Map(const AxisPlan& axis, double value, const PageFactors& factors) {
  return axis.map(static_cast<float>(value), factors);
}

// Millimetres per unit of the quantity at these factors.
double Density(const AxisPlan& axis, const PageFactors& factors) {
  return std::fabs(Map(axis, 1, factors) - Map(axis, 0, factors));
}

// The factors that stretch the axis's range over `length` millimetres,
// growing in the direction the page's coordinate grows.
PageFactors FittingFactors(const AxisPlan& axis, double length) {
  const PageFactors unit;
  const float factor = static_cast<float>(length / (Map(axis, axis.high, unit) - Map(axis, axis.low, unit)));
  return {factor, factor};
}

std::string Label(const AxisPlan& axis, double value) { return FormatNumber(value, axis.pattern) + axis.suffix; }

// The axis routines set a vertical title beside the widest label the range
// could have, its negative largest end.
double WidestLabel(DrawingSurface& page, const AxisPlan& axis) {
  const double widest = -std::max(std::fabs(axis.low), std::fabs(axis.high));
  return std::max({page.TextWidth(Label(axis, axis.low)), page.TextWidth(Label(axis, axis.high)),
                   page.TextWidth(Label(axis, widest))});
}

double LineHeight(DrawingSurface& page) { return std::fabs(page.TextHeight("0")); }

double TitleHeight(DrawingSurface& page) {
  page.SetFontSize(kGraphTitlePoints);
  const double height = LineHeight(page);
  page.SetFontSize(kAxisPoints);
  return height;
}

struct Margins {
  double left, bottom, right, top;
};

// Room around the frame, at the axis type size: the labels and the title
// of the vertical axis on the left, those of the horizontal one below, half
// the widest horizontal label on the right, the graph's title on top, clear
// of the half line by which the top label rises above the frame.
Margins MarginsOf(DrawingSurface& page, const GraphPlan& graph) {
  return {WidestLabel(page, graph.y) + 2 * kPageLabelGap + page.TextWidth(graph.y.title) + 0.5,
          HorizontalAxisDepth(page) + 0.5, WidestLabel(page, graph.x) / 2 + 0.5,
          TitleHeight(page) + LineHeight(page) / 2 + kPageLabelGap};
}

double FirstStep(const std::vector<double>& steps, double density, double needed) {
  for (double step : steps)
    if (step * density >= needed) return step;
  return steps.back();
}

PlacedGraph PlaceGraph(DrawingSurface& page, const GraphPlan& graph, const PageRect& box) {
  PlacedGraph placed;
  placed.box = box;
  const Margins m = MarginsOf(page, graph);
  placed.plot = {box.left + m.left, box.bottom + m.bottom, std::max(box.right - m.right, box.left + m.left + 1),
                 std::max(box.top - m.top, box.bottom + m.bottom + 1)};
  const PageRect& plot = placed.plot;
  placed.factorsX = FittingFactors(graph.x, plot.Width());
  placed.factorsY = FittingFactors(graph.y, plot.Height());
  placed.originX = plot.left - Map(graph.x, graph.x.low, placed.factorsX);
  placed.originY = plot.bottom - Map(graph.y, graph.y.low, placed.factorsY);
  placed.view = {graph.x.low, graph.y.high, graph.x.high, graph.y.low};
  const double densityX = Density(graph.x, placed.factorsX), densityY = Density(graph.y, placed.factorsY);
  placed.labelStepX = FirstStep(graph.x.labelSteps, densityX, WidestLabel(page, graph.x) + kLabelSpacing);
  placed.labelStepY = FirstStep(graph.y.labelSteps, densityY, LineHeight(page) + kLabelSpacing / 2);
  placed.gridStepX = FirstStep(graph.x.gridSteps, densityX, kGridSpacing);
  placed.gridStepY = FirstStep(graph.y.gridSteps, densityY, kGridSpacing);
  // Marks shrink with the graph, so that a polar of many points in a small
  // graph stays a line rather than a row of markers.
  const double markScale = std::clamp(std::min(plot.Width(), plot.Height()) / kFullMarkGraph, 0.5, 1.0);
  placed.markUnit = kPageDeviceUnit * markScale;
  placed.lineWidth = markScale >= 0.75 ? 2 : 1;
  return placed;
}

// ---- Lists: the footer and the legend ----

struct ListEntry {
  int ordinal;
  const Configuration* set;
  const Polar* polar;
};

std::vector<ListEntry> PrintedPolars(const Airfoil& airfoil) {
  std::vector<ListEntry> entries;
  ForEachTickedPolar(airfoil, [&](int set, int, int ordinal, const Polar& polar) {
    entries.push_back({ordinal, airfoil.Configuration(set).get(), &polar});
  });
  return entries;
}

double RowHeight(DrawingSurface& page) { return std::fabs(page.TextHeight("\u00DCg")) * 1.15; }

// Rows flowing into as many columns as `maxWidth` holds: at the list size
// when everything fits, else at the smallest readable size with the last
// place given to "+ N more". `columnWidth` measures a column at the
// current size; `header` rows stand above every column.
template <class Measure>
ListBlock FitList(DrawingSurface& page, int count, double maxWidth, double maxHeight, int header, Measure columnWidth) {
  ListBlock block;
  block.total = count;
  for (double points : {kListPoints, kMinListPoints}) {
    page.SetFontSize(points);
    block.points = points;
    block.rowHeight = RowHeight(page);
    block.columnWidth = std::min(columnWidth(), maxWidth);
    const int maxColumns = std::max(1, static_cast<int>((maxWidth + kColumnGap) / (block.columnWidth + kColumnGap)));
    const int maxRows = std::max(1, static_cast<int>(maxHeight / block.rowHeight) - header);
    const int places = maxColumns * maxRows;
    const int wanted = std::max(count, 1);
    if (wanted <= places || points == kMinListPoints) {
      block.columns = std::min(maxColumns, (wanted + maxRows - 1) / maxRows);
      block.rows = std::min(maxRows, (wanted + block.columns - 1) / block.columns);
      block.shown = count <= places ? count : places - 1;
      break;
    }
  }
  return block;
}

PageRect BlockArea(double left, double top, const ListBlock& block, int header) {
  const double width = block.columns * block.columnWidth + (block.columns - 1) * kColumnGap;
  const double height = (block.rows + header) * block.rowHeight;
  return {left, top - height, left + width, top};
}

// Shortens `text` with an ellipsis until it fits `width`.
std::string Fit(DrawingSurface& page, std::string text, double width) {
  if (page.TextWidth(text) <= width) return text;
  const std::string ellipsis = "\u2026";
  while (!text.empty() && page.TextWidth(text + ellipsis) > width) {
    text.pop_back();
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.pop_back();
    if (!text.empty() && static_cast<unsigned char>(text.back()) >= 0xC0) text.pop_back();
  }
  return text + ellipsis;
}

void PrintAt(DrawingSurface& page, double x, double y, const std::string& text) {
  page.SetCurrentX(x);
  page.SetCurrentY(y);
  page.Print(text);
}

// A short stretch of the polar's curve with its marker in the middle,
// centred on the row that starts at `top`.
void DrawSample(DrawingSurface& page, const ListBlock& block, double x, double top, int ordinal, bool readable) {
  const double y = top - block.rowHeight / 2;
  page.SetForeColor(PolarColor(ordinal, readable));
  page.Line(x, y, x + kSampleLength, y);
  page.SetCurrentX(x + kSampleLength / 2);
  page.SetCurrentY(y);
  Symbol(page, PolarSymbolIndex(ordinal), kMarkerDeviceSize * kPageDeviceUnit);
  page.SetForeColor(kBlack);
}

// Where the fields of a footer row start, from the column's left edge.
struct FooterFields {
  double set, polar, re, mach, points, width;
  double setWidth, polarWidth;  // the room for the names
};

std::string MachText(double mach) { return std::string(TrimLeadingBlanks(NumberText(mach))); }

FooterFields MeasureFooter(DrawingSurface& page, const std::vector<ListEntry>& entries, Language language) {
  double set = page.TextWidth(GetResString(Text::SetHeading, language)),
         polar = page.TextWidth(GetResString(Text::PolarHeading, language));
  double re = page.TextWidth(GetResString(Text::ReynoldsHeading, language)),
         mach = page.TextWidth(GetResString(Text::MachHeading, language));
  double points = page.TextWidth(GetResString(Text::PointsHeading, language));
  for (const ListEntry& entry : entries) {
    set = std::max(set, page.TextWidth(entry.set->Name));
    polar = std::max(polar, page.TextWidth(entry.polar->Name));
    re = std::max(re, page.TextWidth(LegendText(*entry.polar)));
    mach = std::max(mach, page.TextWidth(MachText(entry.polar->MachNumber)));
    points = std::max(points, page.TextWidth(std::to_string(entry.polar->PointCount())));
  }
  FooterFields fields;
  fields.setWidth = std::min(set, kMaxSetName);
  fields.polarWidth = std::min(polar, kMaxPolarName);
  fields.set = kSampleLength + kFieldGap;
  fields.polar = fields.set + fields.setWidth + kFieldGap;
  fields.re = fields.polar + fields.polarWidth + kFieldGap;
  fields.mach = fields.re + re + kFieldGap;
  fields.points = fields.mach + mach + kFieldGap;
  fields.width = fields.points + points;
  return fields;
}

std::string MoreText(int hidden, Language language) {
  return FormatResString(Text::MorePolars, language, {std::to_string(hidden)});
}

// ---- Layout ----

struct Layout {
  PageLayout page;
  PerGraph<GraphPlan> plans;
  std::vector<ListEntry> entries;
  FooterFields fields{};
};

ListBlock LayOutFooter(DrawingSurface& page, const PageRequest& request, const std::vector<ListEntry>& entries,
                       FooterFields& fields) {
  const double width = request.paper.width - 2 * kPageMargin;
  ListBlock footer =
      FitList(page, static_cast<int>(entries.size()), width, kFooterShare * request.paper.height, 1, [&] {
        fields = MeasureFooter(page, entries, request.language);
        return fields.width;
      });
  if (entries.empty()) footer.columnWidth = width;
  footer.area = BlockArea(kPageMargin, kPageMargin + (footer.rows + 1) * footer.rowHeight, footer, 1);
  return footer;
}

// The legend's place: the chosen corner of the lift-drag plot, inside the
// frame, where it stands on white over the curves.
ListBlock LayOutLegend(DrawingSurface& page, const PageRequest& request, const PlacedGraph& graph, int count) {
  const PageRect& plot = graph.plot;
  const bool upper = request.options.legendCorner == LegendCorner::UpperLeft;
  auto measure = [&] { return kSampleLength + kFieldGap + page.TextWidth("Re= 10000000"); };
  ListBlock legend = FitList(page, count, kLegendShare * plot.Width(), kLegendShare * plot.Height(), 0, measure);
  const PageRect size = BlockArea(0, 0, legend, 0);
  const double left = upper ? plot.left + kLegendInset : plot.right - kLegendInset - size.Width();
  const double top = upper ? plot.top - kLegendInset : plot.bottom + kLegendInset + size.Height();
  legend.area = BlockArea(left, top, legend, 0);
  return legend;
}

Layout LayOut(const Airfoil& airfoil, const PageRequest& request, DrawingSurface& page) {
  const PaperSize& paper = request.paper;
  page.Scale(0, paper.height, paper.width, 0);
  Layout layout;
  layout.plans = GraphPlans(request.ranges);
  layout.entries = PrintedPolars(airfoil);
  PageLayout& result = layout.page;

  page.SetFontSize(kHeadingPoints);
  const double headingTop = paper.height - kPageMargin;
  result.heading = {kPageMargin, headingTop - LineHeight(page), paper.width - kPageMargin, headingTop};
  result.footer = LayOutFooter(page, request, layout.entries, layout.fields);

  // Lift-drag on the left half; the other four two by two beside it.
  page.SetFontSize(kAxisPoints);
  const double top = result.heading.bottom - kBlockGap, bottom = result.footer.area.top + kBlockGap;
  const double left = kPageMargin, right = paper.width - kPageMargin;
  const double split = left + 0.5 * (right - left);
  const double column = (right - split - kBoxGap) / 2, row = (top - bottom - kBoxGap) / 2;
  const PerGraph<PageRect> boxes = {{{
      {left, bottom, split - kBoxGap / 2, top},
      {split + kBoxGap / 2, top - row, split + kBoxGap / 2 + column, top},
      {right - column, top - row, right, top},
      {split + kBoxGap / 2, bottom, split + kBoxGap / 2 + column, bottom + row},
      {right - column, bottom, right, bottom + row},
  }}};
  for (Graph g : kGraphs) result.graphs[g] = PlaceGraph(page, layout.plans[g], boxes[g]);
  if (request.options.legend)
    result.legend = LayOutLegend(page, request, result.graphs[Graph::ClCd], static_cast<int>(layout.entries.size()));
  return layout;
}

// ---- Drawing ----

// The frame, grid and zero lines, the numbers and axis titles outside the
// frame, and the graph's title above it.
void DrawGraphFrame(DrawingSurface& page, const GraphPlan& plan, const PlacedGraph& graph, bool grid) {
  const PageRect& plot = graph.plot;
  page.SetFontSize(kAxisPoints);
  page.SetForeColor(kPageGridColor);
  page.Line(plot.left, plot.top, plot.right, plot.bottom, LineKind::Box);
  page.SetForeColor(kBlack);
  PageAxis x{&page,       graph.originX, graph.originY,    graph.factorsX,  plan.x.low, plan.x.high,
             plot.bottom, plot.top,      graph.labelStepX, graph.gridStepX, plot.bottom};
  plan.x.draw(x, true, grid);
  const double stepY = plan.y.map == CmMM && graph.labelStepY < 0.1 ? 0 : graph.labelStepY;
  PageAxis y{&page,     graph.originX, graph.originY, graph.factorsY,  plan.y.low, plan.y.high,
             plot.left, plot.right,    stepY,         graph.gridStepY, plot.left};
  plan.y.draw(y, true, grid);
  page.SetFontSize(kGraphTitlePoints);
  PrintAt(page, plot.left, graph.box.top, std::string(plan.title));
}

// Graph by graph, each with its own marker size and line width.
void DrawCurves(DrawingSurface& page, const Layout& layout, bool readable) {
  for (Graph g : kGraphs) {
    const PlacedGraph& placed = layout.page.graphs[g];
    BoxSurface box(page, placed.plot, placed.markUnit);
    box.Scale(placed.view.left, placed.view.top, placed.view.right, placed.view.bottom);
    GraphSurfaces surfaces;
    surfaces[g] = &box;
    page.SetDrawWidth(placed.lineWidth);
    for (const ListEntry& entry : layout.entries) {
      page.SetForeColor(PolarColor(entry.ordinal, readable));
      DrawPolarSeries(surfaces, entry.polar->Points(), PolarSymbolIndex(entry.ordinal));
    }
  }
  page.SetForeColor(kBlack);
  page.SetDrawWidth(1);
}

// Calls place(k, x, y) with the top-left corner of each place of the list
// in column order, below `header` rows: the entries shown, then the place
// of "+ N more" (k == shown) when some are left out.
template <class Place>
void ForEachPlace(const ListBlock& list, int header, Place place) {
  const int places = list.shown + (list.shown < list.total ? 1 : 0);
  for (int k = 0; k < places; ++k)
    place(k, list.area.left + (k / list.rows) * (list.columnWidth + kColumnGap),
          list.area.top - (header + k % list.rows) * list.rowHeight);
}

void DrawLegend(DrawingSurface& page, const Layout& layout, const PageRequest& request) {
  const Language language = request.language;
  const ListBlock& legend = layout.page.legend;
  if (legend.columns == 0) return;
  const PageRect& area = legend.area;
  Rectangle backing{area.top + 1, area.left - 1, area.Width() + 2, -(area.Height() + 2)};
  page.SetForeColor(kPageGridColor);
  backing.Fill(page, kWhite);
  page.SetFillStyle(kFillTransparent);
  page.SetForeColor(kBlack);
  page.SetFontSize(legend.points);
  const double textOffset = kSampleLength + kFieldGap;
  ForEachPlace(legend, 0, [&](int k, double x, double y) {
    if (k == legend.shown) return PrintAt(page, x, y, MoreText(legend.total - legend.shown, language));
    const ListEntry& entry = layout.entries[k];
    DrawSample(page, legend, x, y, entry.ordinal, request.readableColors);
    PrintAt(page, x + textOffset, y, LegendText(*entry.polar));
  });
}

void DrawFooter(DrawingSurface& page, const Layout& layout, const PageRequest& request) {
  const ListBlock& footer = layout.page.footer;
  const Language language = request.language;
  const PageRect& area = footer.area;
  page.SetForeColor(kRuleColor);
  page.Line(kPageMargin, area.top + kBlockGap / 2, request.paper.width - kPageMargin, area.top + kBlockGap / 2);
  page.SetForeColor(kBlack);
  page.SetFontSize(footer.points);
  if (layout.entries.empty()) {
    PrintAt(page, area.left, area.top, GetResString(Text::NoActivePolar, language));
    return;
  }
  const FooterFields& f = layout.fields;
  for (int column = 0; column < footer.columns; ++column) {
    const double x = area.left + column * (footer.columnWidth + kColumnGap);
    PrintAt(page, x + f.set, area.top, GetResString(Text::SetHeading, language));
    PrintAt(page, x + f.polar, area.top, GetResString(Text::PolarHeading, language));
    PrintAt(page, x + f.re, area.top, GetResString(Text::ReynoldsHeading, language));
    PrintAt(page, x + f.mach, area.top, GetResString(Text::MachHeading, language));
    PrintAt(page, x + f.points, area.top, GetResString(Text::PointsHeading, language));
  }
  ForEachPlace(footer, 1, [&](int k, double x, double y) {
    if (k == footer.shown) return PrintAt(page, x + f.set, y, MoreText(footer.total - footer.shown, language));
    const ListEntry& entry = layout.entries[k];
    DrawSample(page, footer, x, y, entry.ordinal, request.readableColors);
    PrintAt(page, x + f.set, y, Fit(page, entry.set->Name, f.setWidth));
    PrintAt(page, x + f.polar, y, Fit(page, entry.polar->Name, f.polarWidth));
    PrintAt(page, x + f.re, y, LegendText(*entry.polar));
    PrintAt(page, x + f.mach, y, MachText(entry.polar->MachNumber));
    PrintAt(page, x + f.points, y, std::to_string(entry.polar->PointCount()));
  });
}

}  // namespace

PageLayout LayOutPage(const Airfoil& airfoil, const PageRequest& request, DrawingSurface& page) {
  return LayOut(airfoil, request, page).page;
}

void PrintPage(const Airfoil& airfoil, const PageRequest& request, DrawingSurface& page) {
  const Layout layout = LayOut(airfoil, request, page);
  page.Clear();
  page.SetDrawWidth(1);
  page.SetForeColor(kBlack);
  page.SetFontSize(kHeadingPoints);
  const PageRect& heading = layout.page.heading;
  PrintAt(page, heading.left, heading.top,
          Fit(page, GetResString(Text::Airfoil, request.language) + ": " + airfoil.Name, heading.Width()));
  for (Graph g : kGraphs) DrawGraphFrame(page, layout.plans[g], layout.page.graphs[g], request.options.grid);
  DrawCurves(page, layout, request.readableColors);
  DrawLegend(page, layout, request);
  DrawFooter(page, layout, request);
}

}  // namespace tavilo

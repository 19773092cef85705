#include "plot/plot_data.h"

#include <exception>

#include "base/errors.h"
#include "base/number_text.h"
#include "plot/frames.h"
#include "plot/symbol.h"

namespace tavilo {

namespace {

struct LegendCell {
  double width;   // of "..Re=1000000.."
  double height;  // of "Üg", negative on the lift-drag graph
};

void DrawFrames(const PlotViews& views, const GraphSurfaces& s) {
  for (Graph graph : kGraphs)
    if (s[graph]) Describe(graph).frame(*s[graph], views[graph]);
}

// The graphs' texts but the legend, over everything drawn before them.
void DrawFrameTexts(const Airfoil& airfoil, const PlotRequest& request, const GraphSurfaces& s) {
  const PlotViews& views = request.views;
  DrawingSurface* clCd = s[Graph::ClCd];
  if (clCd) DrawClCdTexts(*clCd, views[Graph::ClCd], airfoil.Name, request.language);
  if (!request.axisNumbers) return;
  // The lift-drag graph's drag labels stand for its bottom numbers.
  if (clCd) {
    const GraphView title = ClCdTitleBox(*clCd, views[Graph::ClCd], airfoil.Name, request.language);
    DrawLeftNumbers(*clCd, views[Graph::ClCd], Describe(Graph::ClCd).y, &title);
  }
  for (Graph graph : kGraphs) {
    DrawingSurface* surface = s[graph];
    if (graph == Graph::ClCd || !surface) continue;
    surface->SetForeColor(kAxisColor);
    DrawBottomNumbers(*surface, views[graph], Describe(graph).x);
    DrawLeftNumbers(*surface, views[graph], Describe(graph).y);
  }
}

void SetForeColor(const GraphSurfaces& s, Color color) {
  for (DrawingSurface* surface : s)
    if (surface) surface->SetForeColor(color);
}

// Columns run leftwards from the view's right edge, one per set; rows run
// down from its top, one per polar index, so an unticked polar leaves its
// row empty.
void DrawLegendEntry(DrawingSurface& surface, const GraphView& view, const LegendCell& cell, int set, int polarIndex,
                     const Polar& polar, int symbol) {
  std::string text = LegendText(polar);
  // The entry's cell, and the inset place where it is written: first as a
  // halo of the background, then over it in the polar's colour.
  const double x = view.right - set * cell.width - view.Width() / 100;
  const double y = view.top + (polarIndex - 1) * cell.height - 0.016 * (view.top - view.bottom);
  PrintOnHalo(surface, x, y, text, kLegendHalo);
  // The marker begins where the text ends instead of covering its last digit.
  double size = view.Width() / 100;
  surface.SetCurrentX(surface.CurrentX() + size / 2);
  Symbol(surface, symbol, size);
}

// Curves and markers go to the surface this many points at a time, from a
// buffer on the stack, so that nothing is allocated however long the polar.
constexpr size_t kPiece = 512;

// Joins the points (x, y) in order, passing over those that `missing`
// picks; the line runs on from the last point plotted. Each piece starts
// where the one before it ended.
template <class X, class Y, class Missing>
void DrawCurve(DrawingSurface& surface, std::span<const PolarPoint> points, X x, Y y, Missing missing) {
  PlotPoint piece[kPiece];
  size_t count = 0;
  for (const PolarPoint& point : points) {
    if (missing(point)) continue;
    if (count == kPiece) {
      surface.Polyline(piece, count);
      piece[0] = piece[count - 1];
      count = 1;
    }
    piece[count++] = {x(point), y(point)};
  }
  if (count >= 2) surface.Polyline(piece, count);
  if (count > 0) {
    surface.SetCurrentX(piece[count - 1].x);
    surface.SetCurrentY(piece[count - 1].y);
  }
}

template <class X, class Y, class Missing>
void DrawMarkers(DrawingSurface& surface, std::span<const PolarPoint> points, int symbol, X x, Y y, Missing missing) {
  double size = kMarkerDeviceSize * surface.ScaleWidth() / surface.Width();
  SymbolFigure figure = SymbolOutline(surface, symbol, size);
  PlotPoint centres[kPiece];
  size_t count = 0;
  const PolarPoint* last = nullptr;
  for (const PolarPoint& point : points) {
    if (missing(point)) continue;
    if (count == kPiece) {
      surface.Figures(centres, count, figure.offsets, figure.count);
      count = 0;
    }
    centres[count++] = {x(point), y(point)};
    last = &point;
  }
  surface.Figures(centres, count, figure.offsets, figure.count);
  // Where Symbol leaves it after the last marker.
  if (last) {
    surface.SetCurrentX(x(*last));
    surface.SetCurrentY(y(*last));
  }
}

}  // namespace

void DrawPolarSeries(const GraphSurfaces& s, std::span<const PolarPoint> points, int symbol) {
  // The graphs without markers first: the order the pictures' shapes have
  // always been listed in.
  for (bool withMarkers : {false, true}) {
    for (Graph graph : kGraphs) {
      const GraphDescription& d = Describe(graph);
      if (!s[graph] || d.markers != withMarkers) continue;
      auto x = [&d](const PolarPoint& p) { return p.*d.pointX; };
      auto y = [&d](const PolarPoint& p) { return p.*d.pointY; };
      auto missing = [&d](const PolarPoint& p) { return d.missing && p.*d.missing <= kMissingBelow; };
      DrawCurve(*s[graph], points, x, y, missing);
      if (withMarkers && symbol) DrawMarkers(*s[graph], points, symbol, x, y, missing);
    }
  }
}

namespace {

void DrawOverlayCurves(const GraphSurfaces& s, const PlotOverlay& overlay) {
  SetForeColor(s, overlay.color);
  DrawPolarSeries(s, overlay.points, 0);
}

// The texts go last, so that no curve covers them: frames, then the
// polars' curves and markers, then the overlays, then the numbers, the
// title and the legend. A wild value ends the curves; the texts are still
// written, the legend up to the polar that was reached, and the error then
// ends the redraw.
void DrawAll(const Airfoil& airfoil, const PlotRequest& request, const GraphSurfaces& s) {
  DrawFrames(request.views, s);
  int reached = 0;
  std::exception_ptr cut;
  try {
    ForEachTickedPolar(airfoil, [&](int, int, int ordinal, const Polar& polar) {
      reached = ordinal;
      SetForeColor(s, PolarColor(ordinal, request.readableColors));
      DrawPolarSeries(s, polar.Points(), PolarSymbolIndex(ordinal));
    });
    for (const PlotOverlay& overlay : request.overlays) DrawOverlayCurves(s, overlay);
  } catch (const RuntimeError&) {
    cut = std::current_exception();
  }
  DrawFrameTexts(airfoil, request, s);
  if (DrawingSurface* clCd = s[Graph::ClCd]) {
    const LegendCell cell{clCd->TextWidth("..Re=1000000.."), clCd->TextHeight("Üg")};
    ForEachTickedPolar(airfoil, [&](int set, int index, int ordinal, const Polar& polar) {
      if (cut && ordinal > reached) return;
      clCd->SetForeColor(PolarColor(ordinal, request.readableColors));
      DrawLegendEntry(*clCd, request.views[Graph::ClCd], cell, set, index, polar, PolarSymbolIndex(ordinal));
    });
  }
  if (cut) std::rethrow_exception(cut);
}

}  // namespace

std::string LegendText(const Polar& polar) { return "Re=" + NumberText(polar.ReynoldsNumber); }

bool PlotData(const Airfoil* airfoil, const PlotRequest& request, const GraphSurfaces& surfaces) {
  if (!airfoil) return true;
  try {
    DrawAll(*airfoil, request, surfaces);
  } catch (const RuntimeError&) {
    // A wild value (a coordinate beyond the device range) or a broken list
    // ends the redraw; what is on the graphs so far stays, without a message,
    // because a redraw runs after every change and must never stop the user.
    return false;
  }
  return true;
}

}  // namespace tavilo

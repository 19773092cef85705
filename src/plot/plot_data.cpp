#include "plot/plot_data.h"

#include "formats/number_text.h"
#include "model/errors.h"
#include "plot/frames.h"
#include "plot/symbol.h"

namespace tavilo {

namespace {

struct LegendCell {
  double width;   // of "..Re=1000000.."
  double height;  // of "Üg", negative on the lift-drag graph
};

void DrawFrames(const Airfoil& airfoil, const PlotRanges& ranges, const GraphSurfaces& s) {
  if (s.clCd) DrawClCdFrame(*s.clCd, ranges, airfoil.Name);
  if (s.clAlfa) DrawClAlfaFrame(*s.clAlfa, ranges);
  if (s.cmAlfa) DrawCmAlfaFrame(*s.cmAlfa, ranges);
  if (s.blu) DrawTransitionFrame(*s.blu, ranges);
  if (s.bll) DrawTransitionFrame(*s.bll, ranges);
}

void SetForeColor(const GraphSurfaces& s, Color color) {
  for (DrawingSurface* surface : {s.clCd, s.clAlfa, s.cmAlfa, s.blu, s.bll})
    if (surface) surface->SetForeColor(color);
}

// Columns run leftwards from the right edge, one per set; rows run down from
// the top, one per polar index, so an unticked polar leaves its row empty.
void DrawLegendEntry(DrawingSurface& surface, const PlotRanges& ranges, const LegendCell& cell,
                     int set, int polarIndex, const Polar& polar, int symbol) {
  std::string text = LegendText(polar);
  Color color = surface.ForeColor();
  surface.SetCurrentX(ranges.cdMax - set * cell.width);
  surface.SetCurrentY(ranges.clMax + (polarIndex - 1) * cell.height);
  surface.SetForeColor(LegendShadow(color));
  surface.Print(text);
  surface.SetForeColor(color);
  surface.SetCurrentX(ranges.cdMax - set * cell.width - ranges.cdMax / 100);
  surface.SetCurrentY(ranges.clMax + (polarIndex - 1) * cell.height -
                      0.016 * (ranges.clMax - ranges.clMin));
  surface.Print(text);
  // The marker begins where the text ends instead of covering its last digit.
  double size = ranges.cdMax / 100;
  surface.SetCurrentX(surface.CurrentX() + size / 2);
  Symbol(surface, symbol, size);
}

// Curves and markers go to the surface this many points at a time, from a
// buffer on the stack, so that nothing is allocated however long the polar.
constexpr size_t kPiece = 512;

// Joins the points (x, y) of the polar in order, passing over those that
// `missing` picks; the line runs on from the last point plotted. Each piece
// starts where the one before it ended.
template <class X, class Y, class Missing>
void DrawCurve(DrawingSurface& surface, const Polar& polar, X x, Y y, Missing missing) {
  PlotPoint piece[kPiece];
  size_t count = 0;
  for (const PolarPoint& point : polar.Points()) {
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
void DrawMarkers(DrawingSurface& surface, const Polar& polar, int symbol, X x, Y y,
                 Missing missing) {
  double size = kMarkerDeviceSize * surface.ScaleWidth() / surface.Width();
  SymbolFigure figure = SymbolOutline(surface, symbol, size);
  PlotPoint centres[kPiece];
  size_t count = 0;
  const PolarPoint* last = nullptr;
  for (const PolarPoint& point : polar.Points()) {
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

constexpr auto kAlfa = [](const PolarPoint& p) { return p.Alfa; };
constexpr auto kCl = [](const PolarPoint& p) { return p.Cl; };
constexpr auto kCd = [](const PolarPoint& p) { return p.Cd; };
constexpr auto kCm = [](const PolarPoint& p) { return p.Cm; };
constexpr auto kTU = [](const PolarPoint& p) { return p.TU; };
constexpr auto kTL = [](const PolarPoint& p) { return p.TL; };
constexpr auto kNeverMissing = [](const PolarPoint&) { return false; };
constexpr auto kNoTU = [](const PolarPoint& p) { return p.TU <= kMissingBelow; };
constexpr auto kNoTL = [](const PolarPoint& p) { return p.TL <= kMissingBelow; };
constexpr auto kNoCm = [](const PolarPoint& p) { return p.Cm <= kMissingBelow; };

void DrawPolar(const GraphSurfaces& s, const Polar& polar, int symbol) {
  if (s.blu) DrawCurve(*s.blu, polar, kTU, kCl, kNoTU);
  if (s.bll) DrawCurve(*s.bll, polar, kTL, kCl, kNoTL);
  if (s.clCd) {
    DrawCurve(*s.clCd, polar, kCd, kCl, kNeverMissing);
    DrawMarkers(*s.clCd, polar, symbol, kCd, kCl, kNeverMissing);
  }
  if (s.clAlfa) {
    DrawCurve(*s.clAlfa, polar, kAlfa, kCl, kNeverMissing);
    DrawMarkers(*s.clAlfa, polar, symbol, kAlfa, kCl, kNeverMissing);
  }
  if (s.cmAlfa) {
    DrawCurve(*s.cmAlfa, polar, kAlfa, kCm, kNoCm);
    DrawMarkers(*s.cmAlfa, polar, symbol, kAlfa, kCm, kNoCm);
  }
}

void DrawAll(const Airfoil& airfoil, const PlotRanges& ranges, const GraphSurfaces& s) {
  DrawFrames(airfoil, ranges, s);
  LegendCell cell{};
  if (s.clCd) cell = {s.clCd->TextWidth("..Re=1000000.."), s.clCd->TextHeight("Üg")};
  int ordinal = 0;
  for (int set = 1; set <= airfoil.ConfigCount(); ++set) {
    ConfigurationPtr config = airfoil.Configuration(set);
    if (!config) continue;
    for (int index = 1; index <= config->PolarCount(); ++index) {
      // Counted before the tick test so that a polar keeps its colour and
      // marker when others are ticked or unticked.
      ++ordinal;
      PolarPtr polar = config->Polar(index);
      if (!polar || !polar->Selected) continue;
      int symbol = PolarSymbolIndex(ordinal);
      SetForeColor(s, Color::Palette(PolarColorIndex(ordinal)));
      if (s.clCd) DrawLegendEntry(*s.clCd, ranges, cell, set, index, *polar, symbol);
      DrawPolar(s, *polar, symbol);
    }
  }
}

}  // namespace

std::string LegendText(const Polar& polar) { return "Re=" + NumberText(polar.ReynoldsNumber); }

Color LegendShadow(Color color) {
  auto mix = [](uint8_t channel) { return static_cast<uint8_t>((channel + 4 * 255 + 2) / 5); };
  return Color::Rgb(mix(color.red), mix(color.green), mix(color.blue));
}

void PlotData(const Airfoil* airfoil, const PlotRanges& ranges, const GraphSurfaces& surfaces) {
  if (!airfoil) return;
  try {
    DrawAll(*airfoil, ranges, surfaces);
  } catch (const RuntimeError&) {
    // A wild value (a coordinate beyond the device range) or a broken list
    // ends the redraw; what is on the graphs so far stays, without a message,
    // because a redraw runs after every change and must never stop the user.
  }
}

}  // namespace tavilo


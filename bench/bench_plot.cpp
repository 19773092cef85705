// Redrawing all five graphs of many polars: the core alone on a surface that
// draws nothing, and the Qt surface onto 1600 x 1000 images.
#include <benchmark/benchmark.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

#include "model/airfoil.h"
#include "plot/plot_data.h"
#include "plot/zoom.h"

#ifdef TAVILO_HAVE_QT_PLOT
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "plotqt/graph_images.h"
#include "plotqt/page_render.h"
#include "plotqt/qt_surface.h"
#include "plotqt/render_context.h"
#endif

// Every allocation of the program is counted, so that the core's redraw can
// show how few it makes.
namespace {
std::atomic<long> allocations{0};
}  // namespace

void* operator new(size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }

namespace tavilo {
namespace {

// `polars` polars of `points` points each, spread over five sets, with
// smooth, realistic curves inside the default ranges.
AirfoilPtr MakeAirfoil(int polars, int points) {
  auto airfoil = std::make_shared<Airfoil>();
  airfoil->Name = "Benchmark";
  for (int s = 0; s < 5; ++s) airfoil->AddConfiguration(std::make_shared<Configuration>());
  for (int p = 0; p < polars; ++p) {
    auto polar = std::make_shared<Polar>();
    polar->ReynoldsNumber = 50000.0 * (p + 1);
    polar->Selected = true;
    for (int i = 0; i < points; ++i) {
      double alfa = -8 + 24.0 * i / (points - 1);
      PolarPoint point;
      point.Alfa = alfa;
      point.Cl = 0.4 + 0.1 * alfa * std::exp(-alfa * alfa / 600) + 0.002 * p;
      point.Cd = 0.006 + 0.00004 * alfa * alfa + 0.00002 * p;
      point.Cm = -0.08 + 0.002 * alfa;
      point.TU = 0.6 - 0.02 * alfa;
      point.TL = 0.4 + 0.02 * alfa;
      polar->AddPoint(point);
    }
    airfoil->Configuration(p % 5 + 1)->AddPolar(polar);
  }
  return airfoil;
}

// Keeps the geometry of a 1600 x 1000 device and throws every drawing away.
class NullSurface : public DrawingSurface {
 public:
  void Clear() override {}
  void Scale(double l, double t, double r, double b) override {
    left_ = l;
    top_ = t;
    width_ = r - l;
    height_ = b - t;
  }
  double ScaleLeft() const override { return left_; }
  double ScaleTop() const override { return top_; }
  double ScaleWidth() const override { return width_; }
  double ScaleHeight() const override { return height_; }
  double Width() const override { return 1600; }
  double Height() const override { return 1000; }
  double CurrentX() const override { return x_; }
  double CurrentY() const override { return y_; }
  void SetCurrentX(double x) override { x_ = x; }
  void SetCurrentY(double y) override { y_ = y; }
  void Print(std::string_view) override {}
  double TextWidth(std::string_view text) const override { return text.size() * 7 * width_ / 1600; }
  double TextHeight(std::string_view) const override { return 14 * height_ / 1000; }
  Color ForeColor() const override { return color_; }
  void SetForeColor(Color color) override { color_ = color; }
  void SetFillColor(Color) override {}
  void SetFillStyle(int) override {}
  void SetDrawWidth(int) override {}
  long lines = 0;

 protected:
  void DrawLine(double, double, double x2, double y2, Color, LineKind) override {
    ++lines;
    x_ = x2;
    y_ = y2;
  }

 private:
  double left_ = 0, top_ = 0, width_ = 1, height_ = 1, x_ = 0, y_ = 0;
  Color color_;
};

void BM_PlotDataCore(benchmark::State& state) {
  AirfoilPtr airfoil = MakeAirfoil(100, 200);
  NullSurface s[5];
  const PlotRequest request;
  const long before = allocations.load();
  for (auto _ : state) PlotData(airfoil.get(), request, {&s[0], &s[1], &s[2], &s[3], &s[4]});
  // A few per polar (its legend text), none per point.
  state.counters["allocations"] =
      benchmark::Counter(double(allocations.load() - before), benchmark::Counter::kAvgIterations);
  state.counters["points"] = 100 * 200;
  state.counters["ns_per_point"] =
      benchmark::Counter(100 * 200, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_PlotDataCore)->Unit(benchmark::kMillisecond);

#ifdef TAVILO_HAVE_QT_PLOT
void EnsureApplication() {
  static QGuiApplication* app = [] {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "tavilo_bench";
    static char* argv[] = {name, nullptr};
    return new QGuiApplication(argc, argv);
  }();
  (void)app;
}

// The window's redraw: all graphs of `polars` polars of 200 points onto
// 1600 x 1000 images, at once on as many threads as there are cores. With no polars it shows what clearing and the
// frames cost alone; the second argument is the screen's pixel ratio (2 on a dense screen, where the images have four
// times the pixels).
void BM_PlotDataQtImages(benchmark::State& state) {
  EnsureApplication();
  const int polars = int(state.range(0)), ratio = int(state.range(1));
  AirfoilPtr airfoil = MakeAirfoil(polars, 200);
  PerGraph<QImage> images;
  for (QImage& image : images) {
    image = QImage(1600 * ratio, 1000 * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    // The window keeps its images from redraw to redraw, so their pages are
    // in memory; the first touch of fresh ones (a page fault per 4 KiB)
    // would weigh on the first redraw and so on short runs.
    image.fill(Qt::white);
  }
  const QRectF area(0, 0, 1600, 1000);
  const PlotRequest request;
  RenderContext context;  // the window's, kept from redraw to redraw
  GraphImages graphs;
  for (Graph g : kGraphs) graphs[g] = {&images[g], area.size()};
  const QFont font = QGuiApplication::font();
  for (auto _ : state) PlotDataOnImages(airfoil.get(), request, graphs, font, context);
  if (polars > 0)
    state.counters["ns_per_point"] =
        benchmark::Counter(polars * 200, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_PlotDataQtImages)
    ->Args({0, 1})
    ->Args({0, 2})
    ->Args({100, 1})
    ->Args({100, 2})
    ->Unit(benchmark::kMillisecond);

// A wheel step on the lift-drag graph: that graph alone redrawn in a zoomed
// view with numbers on its axes, 100 polars x 200 points, onto an image of
// the window's graph (900 x 500, at pixel ratio 1 and 2).
void BM_ZoomedRedraw(benchmark::State& state) {
  EnsureApplication();
  const int ratio = int(state.range(0));
  AirfoilPtr airfoil = MakeAirfoil(100, 200);
  QImage image(900 * ratio, 500 * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);  // in memory, as above
  PlotRequest request;
  request.axisNumbers = true;
  GraphView& clCd = request.views[Graph::ClCd];
  clCd = ZoomAbout(clCd, clCd, 0.008, 0.6, 0.8);
  RenderContext context;
  for (auto _ : state) {
    QPainter painter(&image);
    QtSurface surface(painter, QRectF(0, 0, 900, 500), context);
    GraphSurfaces surfaces;
    surfaces[Graph::ClCd] = &surface;
    PlotData(airfoil.get(), request, surfaces);
  }
}
BENCHMARK(BM_ZoomedRedraw)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// The printed page of 100 polars x 200 points, laid out and written as a
// PDF file (A4, lines and texts as vectors), as `--print` writes it.
void BM_PrintPagePdf(benchmark::State& state) {
  EnsureApplication();
  AirfoilPtr airfoil = MakeAirfoil(int(state.range(0)), 200);
  PageRequest request;
  request.options = {true, true, LegendCorner::LowerRight};
  const std::string path = "/tmp/tavilo_bench_page.pdf";
  std::string error;
  for (auto _ : state)
    if (!WritePagePdf(*airfoil, request, path, &error)) state.SkipWithError(error.c_str());
  std::remove(path.c_str());
}
BENCHMARK(BM_PrintPagePdf)->Arg(100)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace tavilo

#include "plotqt/render_context.h"

#include <thread>

#include "base/worker_pool.h"

namespace tavilo {

namespace {

// Past this many texts the cache starts afresh: a long session meets many
// fonts and sizes, a redraw only a few hundred texts.
constexpr qsizetype kMaxTexts = 4096;

QString FromUtf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

RenderContext::RenderContext() = default;
RenderContext::~RenderContext() = default;

const QImage& RenderContext::Kept(const QString& key, const std::function<QImage()>& make) {
  if (auto found = images_.constFind(key); found != images_.constEnd()) return *found;
  if (images_.size() >= kMaxTexts) images_.clear();
  return *images_.insert(key, make());
}

void RenderContext::ForEach(int count, const std::function<void(int, RenderContext&)>& draw) {
  if (!helpers_) helpers_ = std::make_unique<WorkerPool<RenderContext>>();
  helpers_->ForEach(count, int(std::thread::hardware_concurrency()), *this, draw);
}

// Laying out a text costs more than drawing it, and a redraw prints the
// same legend and scale texts again and again, so laid-out texts are kept.
const RenderContext::LaidOutText& RenderContext::LaidOut(const QString& layoutKey, std::string_view text,
                                                         const QFont& font, const QFontMetricsF& metrics) {
  QString key = layoutKey;
  key += QChar(0);
  key += FromUtf8(text);
  if (auto found = texts_.constFind(key); found != texts_.constEnd()) return *found;
  if (texts_.size() >= kMaxTexts) texts_.clear();
  QString string = FromUtf8(text);
  QStaticText laidOut(string);
  laidOut.setTextFormat(Qt::PlainText);
  laidOut.setPerformanceHint(QStaticText::AggressiveCaching);
  laidOut.prepare(QTransform(), font);
  return *texts_.insert(key, {laidOut, metrics.horizontalAdvance(string)});
}

}  // namespace tavilo

#include "plotqt/render_context.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace tavilo {

namespace {

// Past this many texts the cache starts afresh: a long session meets many
// fonts and sizes, a redraw only a few hundred texts.
constexpr qsizetype kMaxTexts = 4096;

QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

// A thread kept for drawing, with a context of its own that it makes and
// destroys itself, so that its texts live and die with the thread's fonts.
class RenderContext::Helper {
 public:
  Helper() : thread_([this] { Serve(); }) {}
  ~Helper() {
    {
      std::lock_guard lock(mutex_);
      quit_ = true;
    }
    wake_.notify_one();
    thread_.join();
  }

  // Runs job(context) on the thread.
  void Start(std::function<void(RenderContext&)> job) {
    {
      std::lock_guard lock(mutex_);
      job_ = std::move(job);
      failure_ = nullptr;
    }
    wake_.notify_one();
  }

  // Waits for the job; what it threw, if anything.
  std::exception_ptr Wait() {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return !job_; });
    return failure_;
  }

 private:
  void Serve() {
    std::optional<RenderContext> context;
    context.emplace();
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return quit_ || job_; });
      if (quit_) break;
      lock.unlock();
      std::exception_ptr failure;
      try {
        job_(*context);
      } catch (...) {
        failure = std::current_exception();
      }
      lock.lock();
      failure_ = failure;
      job_ = nullptr;
      done_.notify_one();
    }
    lock.unlock();
    context.reset();
  }

  std::mutex mutex_;
  std::condition_variable wake_, done_;
  std::function<void(RenderContext&)> job_;  // empty when there is none
  std::exception_ptr failure_;
  bool quit_ = false;
  std::thread thread_;  // last: it starts at once and uses the rest
};

RenderContext::RenderContext() = default;
RenderContext::~RenderContext() = default;

const QImage& RenderContext::Kept(const QString& key, const std::function<QImage()>& make) {
  if (auto found = images_.constFind(key); found != images_.constEnd()) return *found;
  if (images_.size() >= kMaxTexts) images_.clear();
  return *images_.insert(key, make());
}

void RenderContext::ForEach(int count, const std::function<void(int, RenderContext&)>& draw) {
  const int cores = int(std::thread::hardware_concurrency());
  const int helpers = std::min(count, cores) - 1;
  if (helpers <= 0) {
    for (int i = 0; i < count; ++i) draw(i, *this);
    return;
  }
  while (int(helpers_.size()) < helpers) helpers_.push_back(std::make_unique<Helper>());
  // Each thread takes the next call to make until there is none left.
  std::atomic<int> next{0};
  auto work = [&](RenderContext& context) {
    for (int i; (i = next.fetch_add(1)) < count;) draw(i, context);
  };
  for (int h = 0; h < helpers; ++h) helpers_[h]->Start(work);
  std::exception_ptr failure;
  try {
    work(*this);
  } catch (...) {
    failure = std::current_exception();
  }
  for (int h = 0; h < helpers; ++h)
    if (std::exception_ptr thrown = helpers_[h]->Wait(); thrown && !failure) failure = thrown;
  if (failure) std::rethrow_exception(failure);
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

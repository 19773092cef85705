#pragma once
// What the Qt surfaces of one owner keep from one redraw to the next: the
// texts they have laid out and the marker shapes they have drawn, and the
// threads that draw images at once. The window and the picture renderer
// each own one and hand it to every surface they draw on. A context must go
// before the application object, whose fonts its texts refer to; one owned
// by a window or a function call does.

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QStaticText>
#include <QString>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "plotqt/direct_raster.h"

namespace tavilo {

template <class State>
class WorkerPool;

class RenderContext {
 public:
  RenderContext();
  ~RenderContext();
  RenderContext(const RenderContext&) = delete;
  RenderContext& operator=(const RenderContext&) = delete;

  struct LaidOutText {
    QStaticText text;
    qreal advance;  // in logical pixels
  };

  // UTF-8 `text` laid out in `font` and measured by `metrics`, both for one
  // device; `layoutKey` names the font and the device's resolution, which
  // the layout depends on besides the text. The reference holds until the
  // next call.
  const LaidOutText& LaidOut(const QString& layoutKey, std::string_view text, const QFont& font,
                             const QFontMetricsF& metrics);

  // The image kept under `key`, made by `make` when there is none yet (a
  // text's halo). The reference holds until the next call.
  const QImage& Kept(const QString& key, const std::function<QImage()>& make);

  ShapeCache& Shapes() { return shapes_; }

  // Calls draw(i, context) once for every i below `count`, spread over the
  // calling thread and helper threads that this context keeps (one more for
  // each further core, at most count - 1 in all), and returns when all calls
  // have. Every thread draws with a context of its own, this one on the
  // calling thread: a laid-out text refers to the fonts of the thread that
  // laid it out. After an exception from a call no call starts; it is thrown
  // here once the calls under way have returned.
  void ForEach(int count, const std::function<void(int, RenderContext&)>& draw);

 private:
  QHash<QString, LaidOutText> texts_;
  QHash<QString, QImage> images_;
  ShapeCache shapes_;
  std::unique_ptr<WorkerPool<RenderContext>> helpers_;  // made when first needed
};

}  // namespace tavilo

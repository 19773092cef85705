#pragma once
// What the Qt surfaces of one owner keep from one redraw to the next: the
// texts they have laid out and the marker shapes they have drawn. The window
// and the picture renderer each own one and hand it to every surface they
// draw on. A context must go before the application object, whose fonts its
// texts refer to; one owned by a window or a function call does.

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QStaticText>
#include <QString>
#include <string_view>

#include "plotqt/direct_raster.h"

namespace tavilo {

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

  ShapeCache& Shapes() { return shapes_; }

 private:
  QHash<QString, LaidOutText> texts_;
  ShapeCache shapes_;
};

}  // namespace tavilo

#include "main_layout.h"

#include <cmath>

namespace tavilo {

int TwipsToPixels(double twips, double dpi) { return static_cast<int>(std::lround(twips * dpi / 1440.0)); }

MainLayout LayoutMainWindow(const MainLayout& current, const LayoutMetrics& metrics) {
  auto px = [&metrics](double twips) { return TwipsToPixels(twips, metrics.dpi); };
  MainLayout next = current;
  const int clientWidth = metrics.client.width();
  const int graphHeight = metrics.client.height() - current.tabStrip.top() - metrics.statusBarHeight - px(80);
  const int graphWidth = static_cast<int>(clientWidth * 0.7);

  if (graphHeight > px(500)) {
    next.tabStrip.setHeight(graphHeight);
    next.smallPicture.setHeight(graphHeight - px(160) - metrics.firstTabHeight);
    next.clCdPicture.moveTop(next.smallPicture.top());
    next.clCdPicture.setHeight(next.smallPicture.height());
  }
  if (graphWidth > px(100)) {
    next.tabStrip.moveLeft(graphWidth + px(100));
    next.tabStrip.setWidth(static_cast<int>(clientWidth * 0.3) - px(200));
    next.clCdPicture.moveLeft(px(100));
    next.clCdPicture.setWidth(graphWidth - px(200));
    next.smallPicture.moveLeft(next.tabStrip.left() + px(50));
    next.smallPicture.setWidth(next.tabStrip.width() - px(100));
    next.rangeLeft = clientWidth - metrics.label1Width - px(120);
    const int treeWidth = next.rangeLeft - current.treeView.left() - px(300);
    if (treeWidth > px(500)) next.treeView.setWidth(treeWidth);
  }
  return next;
}

}  // namespace tavilo

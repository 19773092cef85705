#pragma once
// Where the graphs, the tab strip, the range column and the tree go when the
// main window changes size. The lengths of the classic design are in twips
// (1/1440 inch) and are turned into pixels with the screen's logical DPI.

#include <QRect>
#include <QSize>

namespace tavilo {

// Pixels for `twips` at `dpi` logical dots per inch, rounded.
int TwipsToPixels(double twips, double dpi);

struct MainLayout {
  QRect tabStrip;      // theTabStrip
  QRect clCdPicture;   // ClCdPicture
  QRect smallPicture;  // ClAlfaPicture, CmAlfaPicture, BLUPicture, BLLPicture (stacked)
  QRect treeView;      // TreeView1
  int rangeLeft = 0;   // left of Label1 and of the range lists under it
};

struct LayoutMetrics {
  QSize client;  // the window's client area, status bar included
  int statusBarHeight = 0;
  int firstTabHeight = 0;  // height of the tab strip's first tab button
  int label1Width = 0;     // width of the range column
  double dpi = 96;
};

// The layout for `metrics`, starting from the positions in `current`.
// Heights change only when there is room for the graphs (more than 500
// twips), widths only when the graph column is wider than 100 twips, and the
// tree only when it would be wider than 500 twips; everything else stays.
MainLayout LayoutMainWindow(const MainLayout& current, const LayoutMetrics& metrics);

}  // namespace tavilo

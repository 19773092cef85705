#pragma once

namespace tavilo {

// More lines than this would fill a graph solid; the cap also ends a loop
// whose step is lost in a huge typed range (v + step == v).
inline constexpr int kMaxGridLines = 10000;

// Calls draw(v) for v = first, first + step, ... while v <= last, the step
// added to a running sum, so that a value which rounding pushes just past
// `last` is left out.
template <class Draw>
void ForEachStep(double first, double step, double last, Draw draw) {
  int count = 0;
  for (double v = first; v <= last && count < kMaxGridLines; v += step, ++count) draw(v);
}

}  // namespace tavilo

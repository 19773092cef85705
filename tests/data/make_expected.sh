#!/bin/sh
# Writes the expected tables (*.expected) of the real polar files beside them.
# Deliberately independent of the program: the values are taken from the
# files by awk's whitespace field splitting, not by fixed columns or by
# Tavilo's own number reading, so a test that compares the two catches a
# reader that drifts from what the files say.
#
# Table lines:  name <airfoil name>   set <set name>   polar <Re> <Mach>
# then one line per point: XFOIL  Alfa Cl Cd Cm TU TL;  UIUC  Alfa Cl Cd
# (Cd the mean of the drag values above 1e-16 among the five after Cl).
set -e
cd "$(dirname "$0")"
export LC_ALL=C

for f in xfoil/*.pol; do
  awk '
    { sub(/\r$/, "") }
    /Calculated polar for:/ { name = substr($0, 24); sub(/ +$/, "", name); print "name " name; next }
    /^ Mach =/ { printf "polar %.17g %.17g\n", $6 * 10 ^ $8, $3; next }
    /^  ------/ { inPoints = 1; next }
    inPoints && NF == 0 { inPoints = 0; next }
    inPoints { print $1, $2, $3, $5, $6, $7 }
  ' "$f" > "$f.expected"
done

for f in uiuc/*.DRG uiuc/*_drg.txt; do
  awk '
    { sub(/\r$/, "") }
    /^Airfoil: / { name = substr($0, 10); sub(/ +$/, "", name); print "name " name; afterName = 0; next }
    { ++afterName }
    afterName == 2 && !setDone { print "set UIUC, " $0; setDone = 1 }
    /^Average Reynolds #:/ { getline; sub(/\r$/, ""); re = $1 + 0; next }
    /^Number of angles of attack:/ { getline; sub(/\r$/, ""); left = $1 + 0; printf "polar %.17g 0\n", re; getline; next }
    left > 0 {
      sum = 0; n = 0
      for (k = 3; k <= 7; ++k) if ($k + 0 > 1e-16) { sum += $k; ++n }
      printf "%s %s %.17g\n", $1, $2, n ? sum / n : 0
      --left
    }
  ' "$f" > "$f.expected"
done

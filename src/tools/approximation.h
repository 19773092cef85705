#pragma once
// The approximation: a lift and drag model of an airfoil over angles of
// attack from -90 to +90 degrees, made of eleven values. Attached flow
// follows a straight lift line that rounds off into Cl Max and Cl Min and a
// drag bucket over lift; over the stall ranges lift and drag go over into
// those of a flat plate, which holds beyond them.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.h"
#include "model/polar_point.h"
#include "strings/text_ids.h"

namespace tavilo {

// The eleven values in the order the dialog lists them.
enum class ApproxField {
  CdTilt,
  StallCdAtClMax,
  StallCdAtClMin,
  CdShift,
  CdExponent,
  CdMin,
  StallRangeClMin,  // degrees
  StallRangeClMax,  // degrees
  ClMax,
  ClMin,
  AlfaZero,  // degrees
};
inline constexpr int kApproxFieldCount = 11;

// The values; the initial ones describe a 12 % cambered airfoil at a
// Reynolds number of one million.
struct ApproxValues {
  double cdTilt = 0.002;
  double stallCdAtClMax = 0.035;
  double stallCdAtClMin = 0.03;
  double cdShift = 0.3;
  double cdExponent = 2.4;
  double cdMin = 0.0065;
  double stallRangeClMin = 6;
  double stallRangeClMax = 8;
  double clMax = 1.45;
  double clMin = -1.1;
  double alfaZero = -2.1;

  double& operator[](ApproxField field);
  double operator[](ApproxField field) const;
  bool operator==(const ApproxValues&) const = default;
};

// The field of index `index` (0..10).
inline ApproxField ApproxFieldAt(int index) { return static_cast<ApproxField>(index); }

// The English name of a field as the C text comments it ("Cd Tilt").
std::string_view ApproxFieldName(ApproxField field);

// Fixed parts of the model. The lift slope of thin-airfoil theory, 2 pi per
// radian, in 1/degree; the lift line is straight up to this share of Cl Max
// (Cl Min) and rounds off into it over as many degrees again as the rest
// of the way would take at that slope; a flat plate's drag across the flow.
inline constexpr double kApproxLiftSlope = 2 * 3.14159265358979323846 * 3.14159265358979323846 / 180;
inline constexpr double kApproxLinearShare = 0.7;
inline constexpr double kFlatPlateCd90 = 2.0;

// What is wrong with a set of values: the field to name, the text, whose %1 takes the field's name, and for a value out
// of its range the range, which the text's %2 and %3 take.
struct ApproxProblem {
  ApproxField field;
  Text messageId;
  double low = 0;
  double high = 0;
};

// The range a real 2-D section can give a value, both ends included; the
// stall drags, the tilt and the shift have ranges that follow from the
// other values (ApproxFieldRange).
struct ApproxRange {
  double low;
  double high;
};
inline constexpr ApproxRange kApproxAlfaZeroRange{-15, 15};
inline constexpr ApproxRange kApproxClMaxRange{0.2, 2.8};
inline constexpr ApproxRange kApproxClMinRange{-2, -0.1};
inline constexpr ApproxRange kApproxStallRangeRange{2, 40};
inline constexpr ApproxRange kApproxCdMinRange{0.001, 0.1};
inline constexpr ApproxRange kApproxCdExponentRange{1.2, 8};
// The most the tilt may take per unit of lift, as a share of Cd Min.
inline constexpr double kApproxTiltShare = 0.5;

// The range of `field` given the other values: the fixed ones above, a
// stall range no shorter than it takes to end on its side of zero angle;
// Cd Shift strictly between Cl Min and Cl Max; a stall drag above Cd Min
// and at most the flat plate's drag where its stall range ends; a tilt of
// at most half of Cd Min per unit of lift either way that leaves the bucket
// rising towards both stall drags (both ends excluded).
ApproxRange ApproxFieldRange(ApproxField field, const ApproxValues& values);

// The first problem of `values`, fields in their order of dependence
// (angles and lift limits, stall ranges, Cd Min, exponent, shift, stall
// drags, tilt), or none. NaN and infinities are never valid. Over every
// valid set the drag never falls from the bucket's lowest point out to
// +-90 degrees, and lift and drag are continuous, lift with its slope.
std::optional<ApproxProblem> FindApproxProblem(const ApproxValues& values);

// Raised for values that FindApproxProblem refuses; what() names the field
// in English.
class ApproxInputError : public RuntimeError {
 public:
  explicit ApproxInputError(const ApproxProblem& problem);
  const ApproxProblem& Problem() const { return problem_; }

 private:
  ApproxProblem problem_;
};

class ApproxModel {
 public:
  // ApproxInputError for values that FindApproxProblem refuses.
  explicit ApproxModel(const ApproxValues& values);

  const ApproxValues& Values() const { return values_; }

  // Lift and drag at `alfa` degrees; finite, and the drag positive, for
  // every finite angle.
  double Cl(double alfa) const;
  double Cd(double alfa) const;
  // The attached-flow drag at lift `cl`: the bucket, never below half of
  // Cd Min. It meets the stall drags at Cl Max and Cl Min.
  double CdAtCl(double cl) const;
  // Whether `alfa` lies between the two stall angles, where lift reaches
  // Cl Min and Cl Max, both included.
  bool Attached(double alfa) const { return alfa >= stallAlfaMin_ && alfa <= stallAlfaMax_; }
  double StallAlfaMax() const { return stallAlfaMax_; }
  double StallAlfaMin() const { return stallAlfaMin_; }

  // The model from -90 to +90 degrees in steps of one degree: Alfa, Cl and
  // Cd; the other fields have no value.
  std::vector<PolarPoint> Curve() const;

 private:
  // One side of the lift curve: +1 towards Cl Max, -1 towards Cl Min.
  struct Side {
    double sign;
    double clLimit;    // Cl Max or Cl Min
    double stallCd;    // drag at clLimit
    double linearEnd;  // angles where the straight line ends, the stall
    double stallAlfa;  // begins and the flat plate takes over
    double plateAlfa;
    double plateCd;      // the flat plate's drag at plateAlfa
    double bucketWidth;  // |clLimit - Cd Shift|
    double bucketRise;   // what the power term adds at clLimit
  };
  const Side& SideOf(double alfa) const { return alfa >= values_.alfaZero ? upper_ : lower_; }

  ApproxValues values_;
  Side upper_;
  Side lower_;
  double stallAlfaMax_;
  double stallAlfaMin_;
};

// The flat plate beyond the stall ranges: Cd90 / 2 sin 2a and Cd90 sin^2 a.
double FlatPlateCl(double alfa);
double FlatPlateCd(double alfa);

// The angles where the stall ranges end: the upper one (above Alfa Zero)
// and the lower one, in degrees.
double ApproxPlateAlfaMax(const ApproxValues& values);
double ApproxPlateAlfaMin(const ApproxValues& values);

// The values as a C initializer "static const double <name>[11] = {", one
// value a line with its name in a comment, "};": LF line ends, four blanks
// of indent, each number in the shortest form that reads back exactly.
// Give it ApproxShownValues for the six digits a person reads.
std::string ApproxInitializer(const ApproxValues& values, std::string_view name = "approx");

// The values rounded to six significant digits, as the dialog shows them;
// to as few more as keep valid values valid where six would not (a stall
// drag a hair above Cd Min).
ApproxValues ApproxShownValues(const ApproxValues& values);

}  // namespace tavilo

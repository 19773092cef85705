#include "points_model.h"

#include <QTimer>
#include <QWidget>

#include "base/number_text.h"
#include "document/points_table.h"
#include "document_controller.h"
#include "qt_user_interface.h"
#include "strings/string_table.h"

namespace tavilo {

PointsModel::PointsModel(PolarPtr polar, DocumentController& document, QtUserInterface& ui, QWidget* window)
    : QAbstractTableModel(window),
      polar_(std::move(polar)),
      document_(document),
      ui_(ui),
      window_(window),
      shownRows_(polar_->PointCount()) {}

void PointsModel::Refresh() {
  if (polar_->PointCount() == shownRows_) {
    if (shownRows_ > 0) emit dataChanged(index(0, 0), index(shownRows_ - 1, kPointColumns - 1));
    return;
  }
  beginResetModel();
  shownRows_ = polar_->PointCount();
  endResetModel();
}

int PointsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shownRows_; }

int PointsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kPointColumns; }

QVariant PointsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= polar_->PointCount()) return {};
  const double value = PointValue(polar_->Points()[static_cast<size_t>(index.row())], index.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      // Text, not a number: Qt would show and edit a number in the locale's way.
      return QString::fromStdString(PointCellText(value));
    case kValueRole: return value;
    case Qt::TextAlignmentRole: return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    default: return {};
  }
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) {
    const std::string_view name = PointColumnName(section);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
  }
  return QString::fromStdString(FormatNumber(section + 1, "0"));
}

Qt::ItemFlags PointsModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool PointsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || index.row() >= polar_->PointCount()) return false;
  std::vector<PolarPoint> points(polar_->Points().begin(), polar_->Points().end());
  PolarPoint& point = points[static_cast<size_t>(index.row())];
  const CellReading reading =
      ReadEditedCell(index.column(), value.toString().toStdString(), PointValue(point, index.column()), ui_.Language());
  if (!reading.Accepted()) {
    Refuse(reading.refusal);
    return false;
  }
  if (PointValue(point, index.column()) == reading.value) return true;
  SetPointValue(point, index.column(), reading.value);
  return document_.Run([&](Document& document) { document.SetPoints(EditKind::EditPoint, polar_, std::move(points)); });
}

void PointsModel::Refuse(const std::string& message) {
  // Shown once the editor has closed: a box opened while it commits would
  // take its focus, and the focus leaving would commit the text again.
  if (refusing_) return;
  refusing_ = true;
  QTimer::singleShot(0, this, [this, message] {
    ui_.ShowMessageIn(window_, message, ErrorTitle(ui_.Language()), MessageIcon::Warning);
    refusing_ = false;
  });
}

}  // namespace tavilo

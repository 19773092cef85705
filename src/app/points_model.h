#pragma once
// The points of one polar as a table model: Alfa, Cl, Cd, Cm, TU, TL, each
// cell as text with a period decimal, unknown values empty. An accepted
// entry is one step of the document; a refused one is said in a message
// in front of the table's window.

#include <QAbstractTableModel>

#include "model/polar.h"

namespace tavilo {

class DocumentController;
class QtUserInterface;

class PointsModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The role whose data is a cell's value as a number, for sorting.
  static constexpr int kValueRole = Qt::UserRole;

  // `window`, the table's, is the model's parent too.
  PointsModel(PolarPtr polar, DocumentController& document, QtUserInterface& ui, QWidget* window);

  const PolarPtr& Polar() const { return polar_; }
  // Shows the polar's points as they are now.
  void Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  void Refuse(const std::string& message);

  PolarPtr polar_;
  DocumentController& document_;
  QtUserInterface& ui_;
  QWidget* window_;
  int shownRows_ = 0;
  bool refusing_ = false;  // a refusal's message is on its way
};

}  // namespace tavilo

#pragma once
// frmPoints, the table of one polar's points beside the main window: cells
// to edit, rows to add, delete, copy and paste, each change one step of the
// document; sorting by a column only orders the view. It follows the
// document: renames and undo show at once, and it closes when its polar is
// no longer in the current airfoil; Escape closes it too. PointsWindows
// keeps one per polar.

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "document/command.h"

class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace tavilo {

class DocumentController;
class PointsModel;
class QtUserInterface;
class UndoActions;

class PointsWindow : public QWidget {
  Q_OBJECT

 public:
  PointsWindow(PolarPtr polar, DocumentController& document, QtUserInterface& ui, UndoActions& undo,
               QWidget* mainWindow);

  const PolarPtr& Polar() const;
  // Shows the polar's points and names as they are now; closes the window
  // when the polar is gone.
  void DocumentChanged();
  void SwitchLanguage();

  // A copy of the current point after it (Alfa, Cl, Cd of 0 in an empty
  // polar).
  void AddRow();
  // The rows that have a selected cell.
  void DeleteRows();
  // The selected rows in the order shown, under a header line, to the
  // clipboard.
  void CopyRows();
  // The clipboard's rows after the last selected row, or at the end.
  void PasteRows();

 private:
  // The polar's point indices (0-based) of the rows with a selected cell,
  // in the order the view shows them.
  std::vector<int> SelectedRows() const;
  // Selects the polar's point `row` in the view and makes it current.
  void SelectRow(int row);
  // Gives the polar `points` as a step of `kind`, then selects point `selectRow`.
  void Change(EditKind kind, std::vector<PolarPoint> points, int selectRow);

  DocumentController& document_;
  QtUserInterface& ui_;
  PointsModel* model_;
  QSortFilterProxyModel* view_;
  QTableView* table_;
  QPushButton* addRow_;
  QPushButton* deleteRows_;
};

class PointsWindows : public QObject {
  Q_OBJECT

 public:
  PointsWindows(QWidget* mainWindow, DocumentController& document, QtUserInterface& ui, UndoActions& undo);

  // Opens the table of the polar at tree key `key`, or raises it if open.
  void Show(const std::string& key);
  void DocumentChanged();
  void SwitchLanguage();
  std::vector<PointsWindow*> Windows() const;

 private:
  QWidget* mainWindow_;
  DocumentController& document_;
  QtUserInterface& ui_;
  UndoActions& undo_;
  std::vector<QPointer<PointsWindow>> windows_;
};

}  // namespace tavilo

#pragma once

#include <QAbstractListModel>
#include <QPalette>
#include <vector>

#include "desktop/locator/locatormatch.h"
#include "desktop/locator/locatorsource.h"

namespace qmrules::desktop {

// The entries that the locator offers, with what the delegate draws.
class LocatorModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    kPlace = Qt::UserRole,  // QString
    kMarks,                 // QVariantList of QPoint: where a match begins, and its length
  };

  explicit LocatorModel(QObject* parent) : QAbstractListModel(parent) {}

  // Shows the entries that the text found.
  void Show(const std::vector<LocatorEntry>& entries, const LocatorQuery& query);
  // Draws the pictures anew, for these colours.
  void SetPalette(const QPalette& palette);
  const LocatorEntry& Entry(int row) const { return entries_[static_cast<std::size_t>(row)]; }
  // The row of the object with this key, or -1.
  int RowOf(const std::string& key) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  QVariant Picture(const LocatorEntry& entry) const;

  std::vector<LocatorEntry> entries_;
  std::vector<QVariantList> marks_;  // of each entry
  QPalette palette_;
};

}  // namespace qmrules::desktop

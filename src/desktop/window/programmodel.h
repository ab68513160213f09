#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "catalogue/registeredsources.h"
#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

// The project's programs for a view: name, language, number of rules.
class ProgramModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kName, kLanguage, kRules, kColumns };
  // For sorting: the number itself where there is one.
  static constexpr int kSortRole = Qt::UserRole;

  explicit ProgramModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  // Shows these programs; the old ones are kept in sight as far as they are the same.
  void SetPrograms(std::vector<catalogue::RegisteredSource> programs);
  // Asked once for each program, now.
  void SetRuleCounts(const std::function<std::int64_t(const catalogue::RegisteredSource&)>& count);
  // Whose text is on view; it is shown in bold. "" for none.
  void SetCurrent(const std::string& key);

  const std::vector<catalogue::RegisteredSource>& Programs() const { return programs_; }
  // The row of the program, or -1.
  int RowOf(const std::string& key) const;
  // Draws the programs with the pictures of this set.
  void UseIcons(const IconSet& icons);
  void Retranslate();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  QVariant TextOf(std::size_t row, int column) const;

  std::vector<catalogue::RegisteredSource> programs_;
  std::vector<std::int64_t> rules_;  // of each program
  std::string current_;
  IconSet icons_{IconSet::Background::Light};
};

}  // namespace qmrules::desktop

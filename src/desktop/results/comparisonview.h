#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "validation/findingplaces.h"

class QLabel;
class QScrollBar;
class QToolButton;

namespace qmrules::desktop {

class ComparisonPane;

// The text of a source by its name; nothing when it cannot be read.
using SourceReader = std::function<std::optional<std::string>(const std::string& fileName)>;

// One finding: the text that the rule had, and beside it the place of the file that it leads to. Where there are
// several, two buttons step through them.
class ComparisonView final : public QWidget {
  Q_OBJECT

 public:
  explicit ComparisonView(QWidget* parent = nullptr);

  // `finding` and its report outlive what is shown. Reads the file now.
  void Show(const validation::RuleFinding& finding, const SourceReader& read);
  void Clear();
  // Takes the steps, too; does nothing at the ends.
  void Step(int places);

 signals:
  void TreeRequested();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void Join(QScrollBar* left, QScrollBar* right);
  void Retranslate();
  void ShowPlace();
  void GoToFirstDifference();
  void ShowTexts();

  const validation::RuleFinding* finding_ = nullptr;
  std::optional<std::string> file_;
  std::vector<validation::FindingPlace> places_;
  std::size_t place_ = 0;
  bool isFollowing_ = false;  // one text is being scrolled along with the other
  std::shared_ptr<const validation::Comparison> comparison_;
  QLabel* meaning_;
  QLabel* step_;
  QToolButton* previous_;
  QToolButton* next_;
  QToolButton* tree_;
  QLabel* storedCaption_;
  QLabel* placeCaption_;
  QLabel* differing_;
  ComparisonPane* stored_;
  ComparisonPane* shown_;
};

}  // namespace qmrules::desktop

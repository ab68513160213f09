#pragma once

#include <QTimer>
#include <functional>

#include "platform/repository.h"

namespace qmrules::desktop {

// Looks for what other processes have written to the store, once a second, and has the repository tell of it. Waits
// while the user is in the midst of something that holds on to objects: a dialog or a menu.
class StoreWatch final : public QObject {
 public:
  struct Observers {
    std::function<void(const platform::ForeignChanges&)> changed;  // after the repository's events; never of nothing
    std::function<void(const QString& text)> failed;               // once, until the store can be read again
  };
  // `repository` outlives this.
  StoreWatch(platform::Repository& repository, Observers observers);

  void Look();

 private:
  platform::Repository& repository_;
  Observers observers_;
  QTimer timer_;
  bool hasFailed_ = false;
};

}  // namespace qmrules::desktop

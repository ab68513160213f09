#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace qmrules::desktop {

// Work on another thread whose result is wanted on the screen's. At most one is under way; starting another one, or
// destroying the task, drops the result of the one before. The work itself runs on, so it holds what it needs.
template <class Result>
class BackgroundTask {
 public:
  BackgroundTask() {
    QObject::connect(&watcher_, &QFutureWatcherBase::finished, &watcher_, [this] { Finish(); });
  }
  BackgroundTask(const BackgroundTask&) = delete;
  BackgroundTask& operator=(const BackgroundTask&) = delete;
  ~BackgroundTask() = default;

  // One of `done` and `failed` is called later, on this thread, unless the task is dropped.
  void Start(std::function<Result()> work, std::function<void(Result)> done,
             std::function<void(const std::exception&)> failed) {
    const auto promise = std::make_shared<QPromise<std::shared_ptr<Result>>>();
    promise->start();
    done_ = std::move(done);
    failed_ = std::move(failed);
    watcher_.setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, work = std::move(work)] {
      try {
        promise->addResult(std::make_shared<Result>(work()));
      } catch (...) {
        promise->setException(std::current_exception());
      }
      promise->finish();
    });
  }

  void Drop() {
    done_ = {};
    failed_ = {};
    watcher_.setFuture({});
  }

 private:
  void Finish() {
    const auto done = std::exchange(done_, {});
    const auto failed = std::exchange(failed_, {});
    if (!done) return;
    std::shared_ptr<Result> result;
    try {
      result = watcher_.result();
    } catch (const std::exception& error) {
      failed(error);
      return;
    }
    done(std::move(*result));
  }

  QFutureWatcher<std::shared_ptr<Result>> watcher_;
  std::function<void(Result)> done_;
  std::function<void(const std::exception&)> failed_;
};

}  // namespace qmrules::desktop

#include "catalogue/memory.h"

#include <fmt/format.h>
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <thread>

#include "catalogue/walk.h"

namespace qmrules::bench {

namespace {

constexpr double limitMiB = 8;
constexpr double bytesPerMiB = 1024.0 * 1024.0;
constexpr int fewRules = 10000;
constexpr std::uint64_t rowOfWrite = 5000;

std::size_t HeapBytes() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// Watches the heap from a thread of its own, so that a peak within one call is seen as well.
class HeapWatch {
 public:
  HeapWatch() : start_(HeapBytes()), peak_(start_) {
    thread_ = std::thread([this] {
      while (!isDone_) {
        peak_ = std::max<std::size_t>(peak_, HeapBytes());
        std::this_thread::sleep_for(std::chrono::microseconds(500));
      }
    });
  }
  ~HeapWatch() { Stop(); }
  HeapWatch(const HeapWatch&) = delete;
  HeapWatch& operator=(const HeapWatch&) = delete;

  // The growth at the peak, from the making of the watch to now.
  double PeakMiB() {
    Stop();
    return static_cast<double>(peak_ - start_) / bytesPerMiB;
  }

 private:
  void Stop() {
    isDone_ = true;
    if (thread_.joinable()) thread_.join();
  }

  std::size_t start_;
  std::atomic<std::size_t> peak_;
  std::atomic<bool> isDone_ = false;
  std::thread thread_;
};

enum class Way { Live, Spooled, Sorted };

void WriteOne(platform::Repository& repository) {
  const auto rule = repository.object("RULE#1");
  rule->Edit();
  rule->Attrs("Valid", "Changed");
  rule->Post();
}

// Walks over the first `rules` rules and returns the growth at the peak in MiB.
double WalkRules(platform::Repository& repository, Way way, int rules) {
  HeapWatch watch;
  // Given up at the end, so that the catalogue stays as it was generated.
  std::unique_ptr<platform::Transaction> transaction;
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", way == Way::Sorted ? "ID,>Description,>Valid" : "ID,Description,Valid",
                                  "ID<" + std::to_string(rules + 1)));
  RowSink sink(RowSink::Mode::Timing);
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    for (const char* name : {"ID", "Description", "Valid"}) sink.Take(fetch->Row().Item(name).Text());
    sink.EndRow();
    if (way == Way::Spooled && sink.Rows() == rowOfWrite) {
      transaction = repository.BeginTransaction();
      WriteOne(repository);
    }
  }
  if (sink.Rows() != static_cast<std::uint64_t>(rules)) {
    throw std::runtime_error(fmt::format("memory: {} rows in place of {}.", sink.Rows(), rules));
  }
  return watch.PeakMiB();
}

}  // namespace

void MeasureMemory(platform::Repository& repository, const Catalogue& catalogue, Report& report) {
  // The page cache of the connection is filled first: it is of a fixed size and no part of a walk.
  WalkRules(repository, Way::Live, catalogue.Rules());
  const int few = std::min(fewRules, catalogue.Rules());
  for (const auto& [way, name] :
       {std::pair{Way::Live, "memory_live"}, {Way::Spooled, "memory_spooled"}, {Way::Sorted, "memory_sorted"}}) {
    const double small = WalkRules(repository, way, few);
    const double large = WalkRules(repository, way, catalogue.Rules());
    fmt::print("{:<22} {:>9} rows: {:.2f} MiB at the peak; {} rows: {:.2f} MiB\n", name, few, small, catalogue.Rules(),
               large);
    std::fflush(stdout);
    report.AddBar(std::string(name) + "_mib", large - small, limitMiB);
  }
}

}  // namespace qmrules::bench

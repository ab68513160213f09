#include "browser/selecting.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "browser/barefetches.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::bench {

namespace {

constexpr int kRounds = 5;
constexpr double kAimSeconds = 2;
constexpr int kSelectedRules = 10000;

void Require(bool isTrue, const char* what) {
  if (!isTrue) throw std::runtime_error(what);
}

int SelectedCount(const Catalogue& catalogue) {
  return std::min(kSelectedRules, catalogue.Rules());
}

// From 0; the rules lie all over the catalogue.
int SelectedRule(int place, const Catalogue& catalogue) {
  return 1 + place * (catalogue.Rules() / SelectedCount(catalogue));
}

void SelectRules(browser::SelectedKeys& keys, const Catalogue& catalogue) {
  for (int place = 0; place < SelectedCount(catalogue); ++place) {
    const int rule = SelectedRule(place, catalogue);
    const int function = 1 + (rule - 1) / kRulesPerFunction;
    keys.Add(catalogue::RuleNodeKey(function, rule),
             catalogue::RuleSetNodeKey(function, 1 + (rule - 1) / kRulesPerSet));
  }
}

std::uint64_t FetchPlacesOfSelected(platform::Repository& repository, const Catalogue& catalogue) {
  std::uint64_t rows = 0;
  catalogue::IDList list;
  for (int place = 0; place < SelectedCount(catalogue); ++place) {
    list.Add(SelectedRule(place, catalogue));
    if (!list.IsFull()) continue;
    rows += FetchPlaces(repository, list.Text());
    list.Clear();
  }
  return list.Empty() ? rows : rows + FetchPlaces(repository, list.Text());
}

void MeasureAll(BrowserParts& parts, platform::Repository& repository, const Catalogue& catalogue, TimeTable& table) {
  const auto select = [&](int) {
    parts.Selection().UnselectAll();
    browser::SelectedIDs selected;
    const Spent spent = TimeOf([&] {
      parts.Selection().SelectAll();
      selected = parts.Selection().GetSelection();
    });
    Require(selected.rules.Count() == static_cast<std::size_t>(catalogue.Rules()) &&
                selected.sets.Count() == static_cast<std::size_t>(catalogue.Sets()),
            "select_all: the selection is not everything.");
    return spent;
  };
  table.Measure({.name = "select_all", .aimSeconds = kAimSeconds, .ratioLimit = 12, .rounds = kRounds}, select,
                [&](int) { return FetchRuleIDs(repository, catalogue.projectKey); });
  parts.Selection().UnselectAll();
}

void MeasureSelectedOnly(BrowserParts& parts, platform::Repository& repository, const Catalogue& catalogue,
                         TimeTable& table) {
  SelectRules(parts.Keys(), catalogue);
  const std::size_t whole = parts.Tree().Count();
  table.Measure(
      {.name = "selected_only_on", .aimSeconds = kAimSeconds, .ratioLimit = 8, .rounds = kRounds},
      [&](int) {
        if (parts.SelectedOnly().IsOn()) parts.SelectedOnly().TurnOff();
        return TimeOf([&] { parts.SelectedOnly().TurnOn(); });
      },
      [&](int) { return FetchPlacesOfSelected(repository, catalogue); });
  Require(parts.Tree().Count() < whole, "selected_only_on: nothing has left the tree.");
  table.Measure(
      {.name = "selected_only_off", .aimSeconds = kAimSeconds, .ratioLimit = 4, .rounds = kRounds},
      [&](int) {
        if (!parts.SelectedOnly().IsOn()) parts.SelectedOnly().TurnOn();
        return TimeOf([&] { parts.SelectedOnly().TurnOff(); });
      },
      [&](int) { return FetchTree(repository, catalogue.projectKey); });
  Require(parts.Tree().Count() == whole, "selected_only_off: the tree is not whole again.");
}

}  // namespace

void MeasureSelecting(BrowserParts& parts, platform::Repository& repository, const Catalogue& catalogue,
                      TimeTable& table) {
  parts.Objects().LoadTree();
  MeasureAll(parts, repository, catalogue, table);
  MeasureSelectedOnly(parts, repository, catalogue, table);
}

}  // namespace qmrules::bench

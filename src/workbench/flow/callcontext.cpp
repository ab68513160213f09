#include "workbench/flow/callcontext.h"

#include <algorithm>

namespace qmrules::workbench::flow {

CallContext Entered(const CallContext& context, const CallPassed& call) {
  auto first = context.begin();
  const auto open = std::ranges::find(context, call.program, &CallPassed::program);
  if (open != context.end()) first = open + 1;
  if (context.end() - first >= static_cast<std::ptrdiff_t>(kMostOpenCalls)) ++first;
  CallContext entered(first, context.end());
  entered.push_back(call);
  return entered;
}

CallContext Left(const CallContext& context) {
  return {context.begin(), context.empty() ? context.end() : context.end() - 1};
}

bool Covers(const CallContext& wide, const CallContext& narrow) {
  return wide.size() <= narrow.size() && std::equal(wide.rbegin(), wide.rend(), narrow.rbegin());
}

}  // namespace qmrules::workbench::flow

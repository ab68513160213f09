#include "platform/widgets/updown.h"

#include <algorithm>
#include <charconv>

namespace qmrules::platform::widgets {

void UpDown::SetRange(int min, int max) {
  Assign(min_, min);
  Assign(max_, std::max(min, max));
}

int UpDown::Value() const {
  if (buddy_ == nullptr) return min_;
  const std::string& text = buddy_->Text();
  const char* const end = text.data() + text.size();
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return min_;
  return std::clamp(number, min_, max_);
}

bool UpDown::Move(int by) {
  if (buddy_ == nullptr || !buddy_->IsUsable() || !BeginUserAction()) return false;
  const int moved = std::clamp(Value() + by, min_, max_);
  return buddy_->Enter(std::to_string(moved));
}

}  // namespace qmrules::platform::widgets

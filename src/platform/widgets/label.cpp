#include "platform/widgets/label.h"

#include "platform/widgets/caption.h"

namespace qmrules::platform::widgets {

MnemonicEffect Label::PressMnemonic(std::string_view letter) {
  return HasMnemonic(caption_, letter) ? MnemonicEffect::PassOn : MnemonicEffect::None;
}

}  // namespace qmrules::platform::widgets

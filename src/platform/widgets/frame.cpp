#include "platform/widgets/frame.h"

#include "platform/widgets/caption.h"

namespace qmrules::platform::widgets {

MnemonicEffect Frame::PressMnemonic(std::string_view letter) {
  return HasMnemonic(caption_, letter) ? MnemonicEffect::PassOn : MnemonicEffect::None;
}

}  // namespace qmrules::platform::widgets

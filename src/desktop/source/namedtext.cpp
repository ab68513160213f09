#include "desktop/source/namedtext.h"

namespace qmrules::desktop {

void NamedText::SetName(const QString& name) {
  name_ = name;
  Name();
}

void NamedText::Show(const QString& text) {
  setText(text);
  Name();
}

void NamedText::Name() {
  setAccessibleName(text().isEmpty() ? name_ : name_ + QStringLiteral(": ") + text());
}

}  // namespace qmrules::desktop

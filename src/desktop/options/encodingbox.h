#pragma once

#include <QComboBox>
#include <string>

namespace qmrules::desktop {

// The choice of the encoding that sources are read by: the usual ones with a plain meaning, and any other one by its
// name, which is typed.
class EncodingBox final : public QComboBox {
  Q_OBJECT

 public:
  explicit EncodingBox(QWidget* parent);

  // As platform/encoding.h names encodings; "" is the default. A typed name need not be known.
  std::string Encoding() const;
  void SetEncoding(const std::string& encoding);

 signals:
  void EncodingChanged();
};

}  // namespace qmrules::desktop

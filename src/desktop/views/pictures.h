#pragma once

#include <QHash>
#include <QIcon>
#include <string_view>

#include "platform/event.h"
#include "platform/widgets/imagelist.h"

namespace qmrules::desktop {

// The icons of an image list, each made when it is first asked for.
class Pictures {
 public:
  // `images` outlives this.
  explicit Pictures(const platform::widgets::ImageList& images);

  // The icon of the key in any case; an empty one where there is no picture, or one that cannot be drawn.
  QIcon Icon(std::string_view key) const;

  // The list has other pictures now.
  platform::Event<> OnChanged;

 private:
  const platform::widgets::ImageList& images_;
  mutable QHash<QString, QIcon> icons_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop

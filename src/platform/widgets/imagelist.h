#pragma once

#include <string>
#include <string_view>

#include "platform/event.h"
#include "platform/keyedcollection.h"

namespace qmrules::platform::widgets {

// A picture: the bytes of a file in any form that the view can draw, or the path of such a file.
struct Picture {
  std::string path;
  std::string bytes;
};

// Pictures by key, for trees and tool bars. Keys compare without regard to case. A key without a picture shows nothing.
class ImageList final {
 public:
  // Puts a picture under the key, in place of the one that is there.
  void Set(std::string_view key, Picture picture) {
    if (Picture* held = pictures_.Find(key)) {
      *held = std::move(picture);
    } else {
      pictures_.Add(std::move(picture), key);
    }
    OnChanged.Raise();
  }

  // The picture, or nullptr.
  const Picture* Find(std::string_view key) const { return pictures_.Find(key); }
  std::size_t Count() const { return pictures_.Count(); }

  mutable Event<> OnChanged;  // watching a list changes nothing in it

 private:
  KeyedCollection<Picture> pictures_;
};

}  // namespace qmrules::platform::widgets

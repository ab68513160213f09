#pragma once

#include <cstddef>
#include <iterator>
#include <list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "shell/casefold.h"

namespace qmrules::platform {

// An ordered list whose items may each have a text key. Keys compare without regard to case and are unique; items
// without a key are reached by place. Looking up, adding and removing by key costs constant time; a place (from 1)
// costs a walk. References and iterators stay valid until their own item is removed.
template <class T>
class KeyedCollection {
 private:
  struct Entry {
    T item;
    std::optional<std::string> foldedKey;
  };
  using Entries = std::list<Entry>;

 public:
  class const_iterator {
   public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    const_iterator() = default;
    explicit const_iterator(typename Entries::const_iterator at) : at_(at) {}
    reference operator*() const { return at_->item; }
    pointer operator->() const { return &at_->item; }
    const_iterator& operator++() {
      ++at_;
      return *this;
    }
    const_iterator operator++(int) { return const_iterator(at_++); }
    const_iterator& operator--() {
      --at_;
      return *this;
    }
    const_iterator operator--(int) { return const_iterator(at_--); }
    friend bool operator==(const const_iterator&, const const_iterator&) = default;

   private:
    typename Entries::const_iterator at_;
  };

  KeyedCollection() = default;
  KeyedCollection(KeyedCollection&&) noexcept = default;
  KeyedCollection& operator=(KeyedCollection&&) noexcept = default;
  // Copying would leave the index pointing into the other list; CopyCollection makes a copy without keys.
  KeyedCollection(const KeyedCollection&) = delete;
  KeyedCollection& operator=(const KeyedCollection&) = delete;
  ~KeyedCollection() = default;

  std::size_t Count() const { return entries_.size(); }
  bool Empty() const { return entries_.empty(); }
  const_iterator begin() const { return const_iterator(entries_.begin()); }
  const_iterator end() const { return const_iterator(entries_.end()); }

  // Appends an item without a key.
  void Add(T item) { entries_.push_back(Entry{std::move(item), std::nullopt}); }

  // Appends an item under the key; false, with nothing changed, when the key is taken.
  bool Add(T item, std::string_view key) { return Insert(entries_.end(), std::move(item), key); }

  // Puts an item before or after the item that has `neighbour`. False, with nothing changed, when the key is taken.
  // Throws std::out_of_range without that neighbour.
  bool AddBefore(std::string_view neighbour, T item, std::string_view key) {
    return Insert(Position(neighbour), std::move(item), key);
  }
  bool AddAfter(std::string_view neighbour, T item, std::string_view key) {
    return Insert(std::next(Position(neighbour)), std::move(item), key);
  }

  bool Contains(std::string_view key) const { return index_.contains(shell::FoldCase(key)); }

  // The item under the key, or nothing.
  T* Find(std::string_view key) {
    const auto found = index_.find(shell::FoldCase(key));
    return found == index_.end() ? nullptr : &found->second->item;
  }
  const T* Find(std::string_view key) const {
    const auto found = index_.find(shell::FoldCase(key));
    return found == index_.end() ? nullptr : &found->second->item;
  }

  // The item at the place, from 1. Throws std::out_of_range outside 1 to Count().
  T& At(std::size_t place) { return EntryAt(place)->item; }
  const T& At(std::size_t place) const { return const_cast<KeyedCollection*>(this)->EntryAt(place)->item; }

  // False when there is no such key.
  bool Remove(std::string_view key) {
    const auto found = index_.find(shell::FoldCase(key));
    if (found == index_.end()) return false;
    entries_.erase(found->second);
    index_.erase(found);
    return true;
  }

  // Removes the item at the place, from 1. Throws std::out_of_range outside 1 to Count().
  void RemoveAt(std::size_t place) {
    const auto entry = EntryAt(place);
    if (entry->foldedKey) index_.erase(*entry->foldedKey);
    entries_.erase(entry);
  }

  void Clear() {
    index_.clear();
    entries_.clear();
  }

 private:
  typename Entries::iterator Position(std::string_view key) {
    const auto found = index_.find(shell::FoldCase(key));
    if (found == index_.end()) throw std::out_of_range("no item has the key \"" + std::string(key) + "\"");
    return found->second;
  }

  typename Entries::iterator EntryAt(std::size_t place) {
    if (place < 1 || place > entries_.size()) {
      throw std::out_of_range("place " + std::to_string(place) + " of " + std::to_string(entries_.size()) + " items");
    }
    return std::next(entries_.begin(), static_cast<std::ptrdiff_t>(place - 1));
  }

  bool Insert(typename Entries::iterator before, T item, std::string_view key) {
    std::string folded = shell::FoldCase(key);
    if (index_.contains(folded)) return false;
    const auto entry = entries_.insert(before, Entry{std::move(item), folded});
    index_.emplace(std::move(folded), entry);
    return true;
  }

  Entries entries_;
  std::unordered_map<std::string, typename Entries::iterator> index_;
};

}  // namespace qmrules::platform

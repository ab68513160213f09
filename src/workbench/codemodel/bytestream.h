#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace qmrules::workbench::codemodel {

// Numbers and texts one behind the other, without regard to alignment. A text has its length in front.
class ByteWriter {
 public:
  void Number32(std::uint32_t number) { Append(&number, sizeof number); }
  void Number64(std::uint64_t number) { Append(&number, sizeof number); }
  void Text(std::string_view text) {
    Number32(static_cast<std::uint32_t>(text.size()));
    Append(text.data(), text.size());
  }
  const std::string& Bytes() const { return bytes_; }

 private:
  void Append(const void* bytes, std::size_t size) { bytes_.append(static_cast<const char*>(bytes), size); }
  std::string bytes_;
};

// The way back. Once the bytes have given out, everything read is 0 or empty and Failed() is true.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::uint32_t Number32() { return Number<std::uint32_t>(); }
  std::uint64_t Number64() { return Number<std::uint64_t>(); }
  std::string_view Text() {
    const std::span<const std::byte> text = Cut(Number32());
    return {reinterpret_cast<const char*>(text.data()), text.size()};
  }
  // A count of things that take at least so many bytes each; one that cannot be fails.
  std::uint32_t Count(std::size_t least) {
    const std::uint32_t count = Number32();
    if (count > bytes_.size() / least) failed_ = true;
    return failed_ ? 0 : count;
  }
  bool Failed() const { return failed_; }
  bool AtEnd() const { return bytes_.empty(); }

 private:
  template <typename T>
  T Number() {
    T number = 0;
    const std::span<const std::byte> bytes = Cut(sizeof number);
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), sizeof number);
    return number;
  }
  std::span<const std::byte> Cut(std::size_t size) {
    if (failed_ || size > bytes_.size()) {
      failed_ = true;
      return {};
    }
    const std::span<const std::byte> cut = bytes_.first(size);
    bytes_ = bytes_.subspan(size);
    return cut;
  }

  std::span<const std::byte> bytes_;
  bool failed_ = false;
};

}  // namespace qmrules::workbench::codemodel

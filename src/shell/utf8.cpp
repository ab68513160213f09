#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

unsigned ByteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

/// Bytes that the lead byte promises, 0 for a byte that cannot lead.
std::size_t PromisedLength(unsigned lead) {
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead <= 0xDF) {
    return 2;
  }
  if (lead >= 0xE0 && lead <= 0xEF) {
    return 3;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    return 4;
  }
  return 0;
}

/// The second byte carries the limits that rule out overlong forms, surrogates and values past U+10FFFF.
bool IsSecondByteAllowed(unsigned lead, unsigned second) {
  switch (lead) {
    case 0xE0:
      return second >= 0xA0 && second <= 0xBF;
    case 0xED:
      return second >= 0x80 && second <= 0x9F;
    case 0xF0:
      return second >= 0x90 && second <= 0xBF;
    case 0xF4:
      return second >= 0x80 && second <= 0x8F;
    default:
      return second >= 0x80 && second <= 0xBF;
  }
}

}  // namespace

Utf8Step DecodeAt(std::string_view text, std::size_t position) {
  const unsigned lead = ByteAt(text, position);
  if (lead < 0x80) {
    return {static_cast<char32_t>(lead), 1};
  }
  const Utf8Step malformed{kMalformedByte + static_cast<char32_t>(lead), 1};
  const std::size_t length = PromisedLength(lead);
  if (length == 0 || text.size() - position < length || !IsSecondByteAllowed(lead, ByteAt(text, position + 1))) {
    return malformed;
  }
  char32_t value = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned byte = ByteAt(text, position + i);
    if ((byte & 0xC0U) != 0x80U) {
      return malformed;
    }
    value = (value << 6U) | (byte & 0x3FU);
  }
  return {value, length};
}

std::size_t EncodeTo(char32_t value, char* out) {
  const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
  const auto tail = [&byte](char32_t bits) { return byte(0x80U | (bits & 0x3FU)); };
  if (value < 0x80) {
    out[0] = byte(value);
    return 1;
  }
  if (value >= kMalformedByte) {
    out[0] = byte(value - kMalformedByte);
    return 1;
  }
  if (value < 0x800) {
    out[0] = byte(0xC0U | (value >> 6U));
    out[1] = tail(value);
    return 2;
  }
  if (value < 0x10000) {
    out[0] = byte(0xE0U | (value >> 12U));
    out[1] = tail(value >> 6U);
    out[2] = tail(value);
    return 3;
  }
  out[0] = byte(0xF0U | (value >> 18U));
  out[1] = tail(value >> 12U);
  out[2] = tail(value >> 6U);
  out[3] = tail(value);
  return 4;
}

void AppendUtf8(std::string& out, char32_t value) {
  char bytes[4];
  const std::size_t length = EncodeTo(value, bytes);
  out.append(bytes, length);
}

}  // namespace qmrules::shell

#include "platform/encoding.h"

#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/utf8.h"

namespace qmrules::platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view nextLine = "\xC2\x85";

// iconv takes more than names: an empty name is the user's locale, and a "/" leads in ways to pass over errors.
bool IsName(std::string_view encoding) {
  return !encoding.empty() && std::ranges::all_of(encoding, [](char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') ||
           std::string_view("-_.:+()").find(character) != std::string_view::npos;
  });
}

bool IsUtf8(std::string_view encoding) {
  return shell::EqualIgnoringCase(encoding, "UTF-8") || shell::EqualIgnoringCase(encoding, "UTF8");
}

// What a conversion came to: all of it, or how many bytes of the source were taken before one that cannot be.
struct Converted {
  std::string bytes;
  std::optional<std::size_t> stoppedAt;
};

// One conversion between two encodings.
class Converter {
 public:
  Converter(std::string_view from, std::string_view to) : handle_(Open(from, to)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (IsValid()) ::iconv_close(handle_);
  }

  bool IsValid() const { return handle_ != nullptr; }

  Converted Convert(std::string_view source) const {
    Converted result;
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);  // an earlier conversion may have stopped within a character
    std::vector<char> buffer(std::min<std::size_t>(65536, source.size() * 4 + 64));
    // iconv's signature is older than const; it does not write to the source.
    char* in = const_cast<char*>(source.data());
    std::size_t left = source.size();
    bool flushed = false;
    while (!flushed) {
      char* out = buffer.data();
      std::size_t room = buffer.size();
      const bool atEnd = left == 0;
      const std::size_t code = ::iconv(handle_, atEnd ? nullptr : &in, atEnd ? nullptr : &left, &out, &room);
      const int failure = code == static_cast<std::size_t>(-1) ? errno : 0;
      result.bytes.append(buffer.data(), buffer.size() - room);
      if (failure != 0 && failure != E2BIG) {
        result.stoppedAt = source.size() - left;
        return result;
      }
      flushed = atEnd && failure == 0;
    }
    return result;
  }

 private:
  // nullptr when there is no such conversion.
  static iconv_t Open(std::string_view from, std::string_view to) {
    if (!IsName(from) || !IsName(to)) return nullptr;
    iconv_t handle = ::iconv_open(IconvName(to).c_str(), IconvName(from).c_str());
    return reinterpret_cast<std::intptr_t>(handle) == -1 ? nullptr : handle;
  }
  iconv_t handle_;
};

Error UnknownEncoding(std::string_view encoding) {
  return Error(
      fmt::format("The encoding \"{}\" is not known. Name one such as UTF-8, ISO-8859-1, CP1252, SHIFT_JIS, EUC-KR, "
                  "IBM037 or IBM1047.",
                  encoding));
}

Error Undecodable(std::string_view bytes, std::size_t offset, std::string_view encoding, std::string_view name) {
  return Error(fmt::format("{}: the byte 0x{:02X} at offset {} is no text in {}. Choose another encoding.", name,
                           static_cast<unsigned char>(bytes[offset]), offset, encoding));
}

void DropByteOrderMark(std::string& text) {
  if (text.starts_with(byteOrderMark)) text.erase(0, byteOrderMark.size());
}

bool DecodesTo(const Converter& decoder, std::string_view bytes, std::string_view text) {
  const Converted decoded = decoder.Convert(bytes);
  return !decoded.stoppedAt && decoded.bytes == text;
}

// Told by two of its letters, since the family has dozens of names.
bool IsEbcdic(const Converter& decoder) {
  return DecodesTo(decoder, "\xC1\xF1", "A1");
}

std::string WithRecordsEndedByLf(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (true) {
    const std::size_t at = text.find(nextLine);
    result += text.substr(0, at);
    if (at == std::string_view::npos) return result;
    result += '\n';
    text.remove_prefix(at + nextLine.size());
  }
}

// What an encoding can hold. iconv would pass off a look-alike for some characters, as a backslash for the yen sign,
// which nobody could tell from the real one afterwards; so each character has to come back as itself.
class CharacterSet {
 public:
  explicit CharacterSet(std::string_view encoding) : encoder_("UTF-8", encoding), decoder_(encoding, "UTF-8") {}

  bool Holds(char32_t character) {
    const auto [known, isNew] = known_.try_emplace(character, false);
    if (isNew) {
      std::string utf8;
      shell::AppendUtf8(utf8, character);
      const Converted encoded = encoder_.Convert(utf8);
      known->second = !encoded.stoppedAt && DecodesTo(decoder_, encoded.bytes, utf8);
    }
    return known->second;
  }

 private:
  Converter encoder_;
  Converter decoder_;
  std::unordered_map<char32_t, bool> known_;
};

// The text in the encoding, `substitute` standing in for what the encoding lacks.
template <class Substitute>
std::string Encode(std::string_view utf8, std::string_view encoding, Substitute substitute) {
  const bool staysUtf8 = encoding.empty() || IsUtf8(encoding);
  const Converter encoder("UTF-8", staysUtf8 ? "UTF-8" : encoding);
  if (!encoder.IsValid()) throw UnknownEncoding(encoding);
  if (const auto malformed = MalformedAt(utf8)) {
    throw Error(fmt::format("The text is not valid UTF-8 at byte offset {}.", *malformed));
  }
  if (staysUtf8) return std::string(utf8);

  CharacterSet characters(encoding);
  std::string writable;
  writable.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const shell::Utf8Step step = shell::DecodeAt(utf8, at);
    if (characters.Holds(step.value)) {
      writable += utf8.substr(at, step.length);
    } else {
      writable += substitute(step.value);
    }
    at += step.length;
  }
  Converted encoded = encoder.Convert(writable);
  if (encoded.stoppedAt) throw Error(fmt::format("The text cannot be written in {}.", encoding));
  return std::move(encoded.bytes);
}

}  // namespace

std::string IconvName(std::string_view encoding) {
  for (const std::string_view name : {"SHIFT_JIS", "SHIFT-JIS", "SJIS"}) {
    if (shell::EqualIgnoringCase(encoding, name)) return "CP932";
  }
  return std::string(encoding);
}

bool IsKnownEncoding(std::string_view encoding) {
  return encoding.empty() || (Converter(encoding, "UTF-8").IsValid() && Converter("UTF-8", encoding).IsValid());
}

void RequireKnownEncoding(std::string_view encoding) {
  if (!IsKnownEncoding(encoding)) throw UnknownEncoding(encoding);
}

bool IsAsciiCompatible(std::string_view encoding) {
  if (encoding.empty()) return true;
  const Converter decoder(encoding, "UTF-8");
  return decoder.IsValid() && DecodesTo(decoder, "A1 \t\n", "A1 \t\n");
}

std::optional<std::size_t> MalformedAt(std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) {
    if (static_cast<unsigned char>(utf8[at]) < 0x80) {
      ++at;
      continue;
    }
    const shell::Utf8Step step = shell::DecodeAt(utf8, at);
    if (step.value >= shell::kMalformedByte) return at;
    at += step.length;
  }
  return std::nullopt;
}

std::string DecodeText(std::string_view bytes, std::string_view encoding, std::string_view name) {
  if (encoding.empty()) encoding = MalformedAt(bytes) ? "ISO-8859-1" : "UTF-8";
  if (IsUtf8(encoding)) {
    if (const auto malformed = MalformedAt(bytes)) throw Undecodable(bytes, *malformed, encoding, name);
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    return std::string(bytes);
  }
  const Converter decoder(encoding, "UTF-8");
  if (!decoder.IsValid()) throw UnknownEncoding(encoding);
  Converted decoded = decoder.Convert(bytes);
  if (decoded.stoppedAt) throw Undecodable(bytes, *decoded.stoppedAt, encoding, name);
  DropByteOrderMark(decoded.bytes);
  if (IsEbcdic(decoder)) return WithRecordsEndedByLf(decoded.bytes);
  return std::move(decoded.bytes);
}

std::string EncodeText(std::string_view utf8, std::string_view encoding) {
  return Encode(utf8, encoding, [encoding](char32_t character) -> std::string {
    throw Error(
        fmt::format("The character U+{:04X} cannot be written in {}.", static_cast<unsigned>(character), encoding));
  });
}

std::string EncodeMarkup(std::string_view utf8, std::string_view encoding) {
  return Encode(utf8, encoding,
                [](char32_t character) { return fmt::format("&#{};", static_cast<unsigned>(character)); });
}

bool LooksBinary(std::string_view bytes) {
  if (bytes.find('\0') != std::string_view::npos) return true;
  const auto strange = std::ranges::count_if(bytes, [](char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 32 && std::string_view("\t\n\r\f\x0E\x0F\x1A\x1B").find(character) == std::string_view::npos;
  });
  return static_cast<std::size_t>(strange) > bytes.size() / 10;
}

}  // namespace qmrules::platform

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qmrules::platform {

// Text encodings by name, in any case: whatever iconv knows, such as "UTF-8", "ISO-8859-1", "CP1252", "SHIFT_JIS",
// "EUC-KR", "IBM037", "IBM1047". The name "" is the default of source files: UTF-8 where the bytes are that, otherwise
// ISO-8859-1, which takes any byte.
//
// "SHIFT_JIS" means what it does on the systems that write it, code page 932: there the byte 0x5C is the "\" of paths,
// and not a yen sign.

bool IsKnownEncoding(std::string_view encoding);
// The name by which iconv knows what the name stands for here.
std::string IconvName(std::string_view encoding);
// Throws Error for an encoding that is not known.
void RequireKnownEncoding(std::string_view encoding);

// True where the bytes below 128 are the characters of ASCII, one byte each: for UTF-8, SHIFT_JIS and most others, not
// for UTF-16 and the EBCDIC family. False for an unknown name.
bool IsAsciiCompatible(std::string_view encoding);

// The bytes as UTF-8, without a byte order mark. The EBCDIC encodings end their records with NEL, which comes out as
// LF; elsewhere U+0085 is a character like any other. Throws Error for an unknown encoding, and, with `name` standing
// for the source and the offset from 0 of the first byte concerned, for bytes that are no text in it.
std::string DecodeText(std::string_view bytes, std::string_view encoding, std::string_view name);

// The UTF-8 text in the encoding ("" is UTF-8), such that DecodeText gives the text again, and without a byte order
// mark unless the encoding calls for one. Throws Error for an unknown encoding, for a text that is not UTF-8, and for a
// character that the encoding lacks.
std::string EncodeText(std::string_view utf8, std::string_view encoding);

// The same for markup: a character that the encoding lacks becomes a character reference such as "&#8364;".
std::string EncodeMarkup(std::string_view utf8, std::string_view encoding);

// The offset, from 0, of the first byte that is not well-formed UTF-8, or nothing.
std::optional<std::size_t> MalformedAt(std::string_view utf8);

// True for bytes that are hardly a text of an encoding that is compatible with ASCII: there is a NUL among them, or
// more than one in ten is a control character that text files do not have (those that they have are tab, LF, CR, form
// feed, the shift codes 14 and 15, 26 and escape). Asked before decoding, to refuse a program file or a picture
// clearly.
bool LooksBinary(std::string_view bytes);

}  // namespace qmrules::platform

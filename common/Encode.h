#pragma once

#include "common/StdStr.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Base64 (RFC 4648, 4). Lengths are octets or characters; 32 bits, as the interface carries them.

/// The standard alphabet, 64 characters.
extern const std::string base64_chars;

/// Writes the Base64 text of `length` octets to `out`, which holds at least 4 * ((length + 2) / 3)
/// characters; no line breaks, no terminating NUL. Returns the characters written, as `outLength`.
/// Throws ca::Exception 16197 when that count needs more than 32 bits.
unsigned base64_encode(const unsigned char* in, unsigned length, char* out, unsigned& outLength);

/// Decodes up to the first "=" or other character outside the alphabet; CR and LF are skipped.
/// `out` holds at least 3 * ((length + 3) / 4) octets. A lone last character yields nothing, two
/// one octet, three two octets. Never fails. Returns the octets written, as `outLength`.
unsigned base64_decode(const char* in, unsigned length, unsigned char* out, unsigned& outLength);

/// What a decoding run did.
struct Base64Run {
    std::size_t written;   ///< octets written
    std::size_t consumed;  ///< index of the character that ended the scan; the length when none did
};

/// base64_decode() of any length that also tells where the scan ended.
Base64Run base64_decode_run(const char* in, std::size_t length, unsigned char* out);

namespace ca {

/// Decodes a NUL-terminated text into a malloc buffer that the caller frees. An empty text gives 0
/// and leaves `out` as it is. Returns the decoded length.
/// Throws ca::Exception 16118 when nothing decodes, 16197 when out of memory.
unsigned Base64Decode(const char* text, unsigned char** out, unsigned& outLength);

/// Replaces `out` by the Base64 text of the octets: padded, no line breaks.
void Base64Encode(const unsigned char* data, unsigned length, std::string& out);

/// True when every one of the first `length` characters (0: all up to the NUL) is alphanumeric or
/// one of "+", "/", "=", CR, LF. Stops at a NUL. An empty text counts as Base64.
bool _IsBase64String(const char* text, unsigned length);

/// A textual wrapper: what stands before and after the Base64 body, as PEM's begin and end lines.
using Base64Wrapper = std::pair<std::string, std::string>;

/// Decodes data that may be Base64, bare or inside one of the wrappers.
/// \param out  null, or a malloc buffer that the caller frees.
/// \return true when something was decoded.
/// Throws what Base64Decode() throws for a body that does not decode.
bool DecodeBase64IfNeeded(const unsigned char* data, unsigned length,
                          const std::vector<Base64Wrapper>& wrappers, unsigned char** out,
                          unsigned& outLength);

/// What begins many UTF-8 files: U+FEFF.
inline constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";

/// A text without its byte-order mark, if it begins with one.
constexpr std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
    return text.starts_with(kUtf8ByteOrderMark) ? text.substr(kUtf8ByteOrderMark.size()) : text;
}

// UTF-8 and UTF-32. Despite the names the wide side holds one code point per wchar_t. Malformed
// input becomes U+FFFD (a lone surrogate in UTF-32 "?"), never a failure; a leading byte-order mark
// is dropped. Pointer forms, and both of u16u8(), read up to the NUL; null throws std::logic_error.

void u8u16(const char* text, std::wstring& out);
std::wstring u8u16(const std::string& text);
void u16u8(const wchar_t* text, std::string& out);
std::string u16u8(const std::wstring& text);

/// The text of big-endian UTF-16 octets. A surrogate without its other half becomes U+FFFD; an
/// octet that is left over at the end gives nothing.
std::wstring ReadUtf16(std::span<const unsigned char> octets);

/// File-system paths are UTF-8 on the narrow side.
std::string PathFromWString(const std::wstring& path);
std::wstring PathToWString(const std::string& path);

/// Removes leading and trailing members of `chars`.
void trim(std::wstring& text, const std::wstring& chars);
void trim(std::string& text, const std::string& chars);

/// The last `n` characters, or all when there are fewer.
std::wstring tail(const std::wstring& text, std::size_t n);

void tolower(std::wstring& text);
void toupper(std::wstring& text);

/// Equal without regard to letter case (wcscasecmp).
bool iequals(const std::wstring& a, const std::wstring& b);

/// Cuts `text` at every member of `delimiters`; empty items are left out. Replaces `out`.
void Split(const std::wstring& text, const std::wstring& delimiters,
           std::vector<std::wstring>& out);
void SplitA(const std::string& text, const std::string& delimiters, std::vector<std::string>& out);

/// The octet with its bits in reverse order.
unsigned char ReverseByte(unsigned char octet);

/// A fresh random UUID in braces, 38 characters, lower case.
std::string UuidGenerate();

}  // namespace ca

/// UTF-32 to UTF-8; throws std::logic_error for null.
std::string CW2A(const wchar_t* text);

/// The C locale's multibyte conversions.
/// Deliberate: the result has the source's length in characters, so it may end in NULs or be cut;
/// the INI engine's narrow twin depends on it.
std::string wstr_to_str(const std::wstring& text);
std::wstring str_to_wstr(const std::string& text);

/// Removes trailing members of `chars`.
void RTrim(std::string& text, const std::string& chars);

#pragma once

#include "common/Encode.h"

// The one way to include rapidjson here: its settings must be the same in every translation unit.

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#ifdef RAPIDJSON_ASSERT
#error "include common/Json.h before any header of rapidjson"
#endif

namespace ca {

/// Where a value is being read, for the report of a value of the wrong type.
struct JsonPosition {
    const char* file;  ///< source file name without folders; static text
    long line;
    const char* key;  ///< the JSON key; static text
};

/// Names the key that this thread reads next; see CA_JSON_KEY.
void SetJsonPosition(const JsonPosition& position) noexcept;

/// Names the member that is read next in the record under that key; static text.
void SetJsonMember(const char* key) noexcept;

/// What this thread reads of a request: `"storeAddress", "name"`, only the key outside a record,
/// nothing after ClearJsonPosition().
std::wstring JsonPlace();
void ClearJsonPosition() noexcept;

/// What rapidjson's assertions end in. Logs the position of the key being read through the host's
/// callback, then stops the process; with MOD_FOO_REPORT_JSON_TYPES throws ca::Exception 16300.
[[noreturn]] void JsonTypeFault(const char* condition);

}  // namespace ca

#define CA_JSON_KEY(name) (::ca::SetJsonPosition({__FILE_NAME__, __LINE__, (name)}))

#define RAPIDJSON_ASSERT(condition) \
    (static_cast<bool>(condition) ? static_cast<void>(0) : ::ca::JsonTypeFault(#condition))
#define RAPIDJSON_HAS_STDSTRING 1
#if defined(__SSE2__) && !defined(RAPIDJSON_SSE2)
#define RAPIDJSON_SSE2
#endif

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace ca {

/// rapidjson's allocator concept over malloc; out of memory is std::bad_alloc instead of a null
/// pointer that rapidjson would write through.
class CJsonAllocator {
  public:
    static const bool kNeedFree = true;
    void* Malloc(std::size_t size) { return size != 0 ? Checked(std::malloc(size)) : nullptr; }
    void* Realloc(void* block, [[maybe_unused]] std::size_t oldSize, std::size_t newSize) {
        if (newSize == 0) {
            std::free(block);
            return nullptr;
        }
        return Checked(std::realloc(block, newSize));
    }
    static void Free(void* block) { std::free(block); }

  private:
    static void* Checked(void* block) {
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return block;
    }
};

using JsonPool = rapidjson::MemoryPoolAllocator<CJsonAllocator>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, CJsonAllocator>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, CJsonAllocator>;

/// Whether a text may be a JSON object, as far as its first character tells; blanks and a
/// byte-order mark may stand before it.
constexpr bool BeginsJsonObject(std::string_view text) noexcept {
    text = WithoutByteOrderMark(text);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '{';
}

/// The allocator of buffers whose text changes hands: it outlives them all.
inline CJsonAllocator jsonHeap;

/// Appends `back` to `front` and empties it. The shorter text is moved; the longer one keeps its
/// memory. Both are of jsonHeap. Throws std::bad_alloc, both being as they were.
/// \param extra  octets that will follow.
inline void JoinTexts(JsonBuffer& front, JsonBuffer& back, std::size_t extra) {
    const std::size_t head = front.GetSize();
    const std::size_t tail = back.GetSize();
    if (head == 0) {
        front.stack_.Swap(back.stack_);
    } else if (tail <= head) {
        front.Reserve(tail + extra);
        std::memcpy(front.Push(tail), back.GetString(), tail);
    } else {
        back.Reserve(head + extra);
        back.Push(head);
        char* const text = back.stack_.Bottom<char>();
        std::memmove(text + head, text, tail);
        std::memcpy(text, front.stack_.Bottom<char>(), head);
        front.stack_.Swap(back.stack_);
    }
    back.stack_.Clear();
    back.stack_.ShrinkToFit();
}

/// Takes the block with the text out of a buffer of jsonHeap; free() releases it.
inline char* DetachText(JsonBuffer& text) {
    // rapidjson's stack gives its block to another one only; that one is never destroyed.
    using Stack = decltype(text.stack_);
    union Keeper {
        explicit Keeper(Stack&& from) : stack(std::move(from)) {}
        ~Keeper() {}  // NOLINT(modernize-use-equals-default): leaves the stack alone
        Stack stack;
    } keeper(std::move(text.stack_));
    return keeper.stack.template Bottom<char>();  // NOLINT(clang-analyzer-unix.Malloc): as above
}

/// rapidjson's writer, which also takes long texts without a copy of its own.
class JsonWriter
    : public rapidjson::Writer<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator> {
  public:
    using Writer::Writer;

    /// Writes a string value of `length` characters that need no escaping, Base64 for one.
    /// \return where the caller puts the characters, before it writes anything else.
    /// Throws std::bad_alloc, the text then being as it was.
    char* PlainString(std::size_t length) {
        os_->Reserve(length + kPlainStringExtra);
        Prefix(rapidjson::kStringType);
        char* place = os_->Push(length + 2);
        place[0] = '"';
        place[length + 1] = '"';
        EndValue(/*ret=*/true);
        return place + 1;
    }

    /// Writes values of an array that are JSON already, with the commas between them.
    /// Throws std::bad_alloc, the text then being as it was.
    void Elements(std::string_view text) {
        os_->Reserve(text.size() + kPlainStringExtra);
        Prefix(rapidjson::kObjectType);
        std::memcpy(os_->Push(text.size()), text.data(), text.size());
        EndValue(/*ret=*/true);
    }

    /// The same, the text being empty then; its memory may become that of what is written.
    void TakeElements(JsonBuffer& text) {
        Prefix(rapidjson::kObjectType);
        JoinTexts(*os_, text, kPlainStringExtra);
        EndValue(/*ret=*/true);
    }

    /// Makes room for octets that will be written, so that the buffer grows only once.
    void Reserve(std::size_t octets) { os_->Reserve(octets); }
    /// Octets written so far.
    std::size_t Size() const { return os_->GetSize(); }

    /// From here on records that keep texts give them up instead of copying them: they are written
    /// for the last time.
    void TakeTexts() { m_takesTexts = true; }
    bool TakesTexts() const { return m_takesTexts; }

  private:
    /// Two quotes, a separator and what closes the text, so that the buffer grows only once.
    static constexpr std::size_t kPlainStringExtra = 256;

    bool m_takesTexts = false;
};

/// Flags for every parse of strangers' text: no recursion on the input's depth.
inline constexpr unsigned kJsonParseFlags = rapidjson::kParseIterativeFlag;

}  // namespace ca

#include "host/Answer.h"

#include "common/Encode.h"
#include "host/JsonEvents.h"

#include <charconv>
#include <cstring>
#include <malloc.h>
#include <utility>

namespace {

// Events instead of a document: an answer may be gigabytes, of which three members are wanted.
// Picks the members of the root that the program needs.
class AnswerMembers : public host::CJsonEvents {
  public:
    explicit AnswerMembers(bool wantFileData) : m_wantFileData(wantFileData) {}

    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 1) {
            m_key.assign(text, length);
        }
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 1) {
            if (m_key == "errorCode") {
                errorCode = ReadNumber({text, length});
            } else if (m_key == "fileDataSize") {
                fileDataSize = ReadNumber({text, length});
            }
        }
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        // Copied only for those who want it: it may be nearly all of the answer.
        if (m_wantFileData && GetDepth() == 1 && m_key == "fileData") {
            fileData = std::string(text, length);
        }
        return true;
    }

    std::optional<std::uint32_t> errorCode;
    std::optional<std::uint32_t> fileDataSize;
    std::optional<std::string> fileData;

  private:
    // 32 bits, as the interface counts; anything else is a fault of the answer.
    static std::optional<std::uint32_t> ReadNumber(std::string_view text) {
        std::uint32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size()) {
            return std::nullopt;
        }
        return number;
    }

    bool m_wantFileData;
    std::string m_key;
};

}  // namespace

namespace host {

CAnswer::CAnswer(char* response, std::size_t size)
    : m_buffer(reinterpret_cast<unsigned char*>(response)) {
    if (response == nullptr) {
        m_fault = "the module gave no answer";
        return;
    }
    // The host frees the buffer, so it is of malloc, which knows how long it can be at most.
    if (const std::size_t room = ::malloc_usable_size(response); size > room) {
        m_fault = "the answer announces " + std::to_string(size) + " octets in a buffer of " +
                  std::to_string(room);
        return;
    }
    // Raw file data stand after the NUL that ends the text.
    const std::size_t length = ::strnlen(response, size);
    // The NUL may be missing: then all of it is text.
    m_text = {response, length};
    if (length < size) {
        m_raw = {m_buffer.Get() + length + 1, size - length - 1};
    }
    Inspect();
}

void CAnswer::Inspect() {
    AnswerMembers members(/*wantFileData=*/false);
    if (const std::string reason = ReadJsonEvents(m_text, members); !reason.empty()) {
        m_fault = "the answer is not valid JSON: " + reason;
        return;
    }
    m_errorCode = members.errorCode;
    if (!m_errorCode) {
        m_fault = "the answer carries no \"errorCode\"";
    } else if (!m_raw.empty() && members.fileDataSize != m_raw.size()) {
        m_fault = "the answer has " + std::to_string(m_raw.size()) +
                  " octets after its text that \"fileDataSize\" does not announce";
    } else if (m_raw.empty() && members.fileDataSize.value_or(0) != 0) {
        m_fault = "the answer lacks the octets that \"fileDataSize\" announces";
    }
}

std::optional<std::string> CAnswer::ExtractOctets() const {
    // Raw octets need no member: they are the result by themselves.
    if (!m_raw.empty()) {
        return std::string(reinterpret_cast<const char*>(m_raw.data()), m_raw.size());
    }
    AnswerMembers members(/*wantFileData=*/true);
    static_cast<void>(ReadJsonEvents(m_text, members));
    if (!members.fileData) {
        // An announced size of 0 is a result without octets; no announcement is no result.
        return members.fileDataSize ? std::optional<std::string>("") : std::nullopt;
    }
    // The result may stand as text as well, where the module was asked for JSON alone.
    const std::string encoded = std::move(*members.fileData);
    std::string octets((encoded.size() + 3) / 4 * 3, '\0');
    const Base64Run run = base64_decode_run(encoded.data(), encoded.size(),
                                            reinterpret_cast<unsigned char*>(octets.data()));
    octets.resize(run.written);
    return octets;
}

}  // namespace host

// Strangers' octets as settings: init strings, and the two configuration files.

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Json.h"
#include "common/PKIConfigFileParser.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

// Names the property that does not hold and stops.
void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

/// A file in memory that holds an input.
class CInputFile {
  public:
    CInputFile(const std::uint8_t* data, std::size_t size) : m_file(::memfd_create("input", 0)) {
        Require(m_file >= 0 && ::write(m_file, data, size) == static_cast<ssize_t>(size),
                "there is a file");
    }
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;
    ~CInputFile() { ::close(m_file); }

    std::wstring Path() const { return L"/proc/self/fd/" + std::to_wstring(m_file); }

  private:
    int m_file;
};

std::string JsonOf(const ca::ISerializable& settings) {
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    settings.ToJson(writer);
    return {text.GetString(), text.GetSize()};
}

void ReadInitString(const std::wstring& text) {
    ca::InitString items;
    try {
        items.Append(text);
    } catch (const ca::Exception&) {
        Require(items.Items().empty(), "a refused text adds nothing");
        return;
    }
    const std::wstring log = items.ToLogString();
    Require(std::none_of(log.begin(), log.end(), [](wchar_t c) { return c >= 0 && c < L' '; }),
            "a log line holds no control characters");
    const std::wstring written = items.ToString();
    if (written.size() <= 65536) {  // quotes may make it longer than what is read
        Require(ca::InitString(written).Items() == items.Items(), "what is written reads back");
    }
}

// Whatever a file holds, the settings are right: a record of them is taken, and is the same.
template <class Settings>
void ReadFile(const std::wstring& path, Settings& settings) {
    std::wstring errorText;
    settings.ParseConfigFile(path, errorText, /*silent=*/false);
    const std::string text = JsonOf(settings);
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags | rapidjson::kParseValidateEncodingFlag>(text.data(),
                                                                                text.size());
    Require(!document.HasParseError(), "the record is JSON of valid UTF-8");
    Settings read;
    read.FromJson(document);
    Require(JsonOf(read) == text, "the record reads back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadInitString(ca::u8u16(std::string(data, data + size)));
    // A lone CR may stand inside a line of the INI file, but not in a record.
    std::vector<std::uint8_t> lines(data, data + size);
    std::replace(lines.begin(), lines.end(), std::uint8_t{'\r'}, std::uint8_t{'\n'});
    const CInputFile file(lines.data(), lines.size());
    ca::ConfigFileParser service;
    ReadFile(file.Path(), service);
    ca::PKIConfigFileParser pki;
    ReadFile(file.Path(), pki);
    const std::wstring base = ca::BuildBaseInitString(service, pki);
    if (base.size() <= 65536) {
        Require(ca::InitString(base).ToString() == base, "the base text reads back");
    }
    return 0;
}

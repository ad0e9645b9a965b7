#pragma once

// Loads the built library as a host does: by its file and its C header only.

#include "module/mod_foo.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// One line that the library logged.
struct LogLine {
    std::wstring text;
    bool isError;

    bool operator==(const LogLine&) const = default;
};

/// What the library logged so far, from any thread.
class LogRecorder {
  public:
    static bool Record(const wchar_t* line, bool isError) {
        const std::lock_guard lock(s_mutex);
        s_lines.push_back({line, isError});
        return true;
    }
    static std::vector<LogLine> Take() {
        const std::lock_guard lock(s_mutex);
        return std::exchange(s_lines, {});
    }

  private:
    static inline std::mutex s_mutex;
    static inline std::vector<LogLine> s_lines;
};

/// The library's entry points.
struct ModuleLibrary {
    void* (*init)(int, CMLogCallback);
    void (*process)(void*, CMPacket*);
    void (*free)(void*);
    CCertInfoDlg* (*createDialog)();

    /// Loaded once and kept: a leak must still have its symbols when the process ends.
    static const ModuleLibrary& Get() {
        static const ModuleLibrary library = Load();
        return library;
    }

  private:
    static ModuleLibrary Load() {
        void* file = ::dlopen(MOD_FOO_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        if (file == nullptr) {
            ADD_FAILURE() << ::dlerror();
            std::abort();
        }
        ModuleLibrary library{};
        Resolve(file, "CM_Init", library.init);
        Resolve(file, "CM_ProcessClientRequest", library.process);
        Resolve(file, "CM_Free", library.free);
        Resolve(file, "_Z17createCertInfoDlgv", library.createDialog);
        return library;
    }
    template <class Function>
    static void Resolve(void* file, const char* name, Function& function) {
        function = reinterpret_cast<Function>(::dlsym(file, name));
        if (function == nullptr) {
            ADD_FAILURE() << "no symbol " << name;
            std::abort();
        }
    }
};

/// An answer, taken over from its packet.
struct Answer {
    std::string text;  ///< without its NUL
    std::string raw;   ///< the octets after the NUL
    rapidjson::Document json;

    explicit Answer(const CMPacket& packet) {
        if (packet.response == nullptr) {
            ADD_FAILURE() << "no answer";
            return;
        }
        text = packet.response;  // the NUL is always there
        if (packet.responseSize > text.size()) {
            raw.assign(packet.response + text.size() + 1, packet.responseSize - text.size() - 1);
        } else {
            EXPECT_EQ(packet.responseSize, text.size());
        }
        std::free(packet.response);
        json.Parse(text.c_str());
        EXPECT_FALSE(json.HasParseError()) << text;
        EXPECT_TRUE(json.IsObject()) << text;
    }

    unsigned Code() const { return json["errorCode"].GetUint(); }
    std::string Message() const { return json["errorMessage"].GetString(); }
};

/// A module with a configuration of its own; the machine's is never read.
class LibraryTest : public testing::Test {
  protected:
    LibraryTest() : m_variable("MOD_FOO_CONFIG", m_directory.File("config.ini").c_str()) {
        SetConfig("Language=En\n");
    }
    ~LibraryTest() override {
        Free();
        LogRecorder::Take();
    }
    LibraryTest(const LibraryTest&) = delete;
    LibraryTest& operator=(const LibraryTest&) = delete;

    /// The settings that the next Init() finds.
    void SetConfig(std::string_view settings) {
        m_directory.Write("config.ini", "[Service settings]\n" + std::string(settings));
    }
    /// The PKI configuration that the next Init() finds.
    void SetPkiConfig(const std::string& text) {
        m_directory.Write("QetCryptoSvcPKIConfig.json", text);
    }
    void RemoveConfig() { std::filesystem::remove(m_directory.File("config.ini")); }

    void* Init(int silent = 1, CMLogCallback callback = &LogRecorder::Record) {
        Free();
        m_module = ModuleLibrary::Get().init(silent, callback);
        EXPECT_NE(m_module, nullptr);
        return m_module;
    }
    void Free() { ModuleLibrary::Get().free(std::exchange(m_module, nullptr)); }

    /// The packet of a request of exactly these octets, a NUL at the end being one of them; its
    /// answer is to be freed. Safe from any thread once Init() has run.
    CMPacket Process(char* data, std::size_t size, bool interactive = true) const {
        CMPacket packet{};
        packet.request = data;
        packet.requestLength = static_cast<std::uint32_t>(size);
        packet.interactive = interactive;
        ModuleLibrary::Get().process(m_module, &packet);
        return packet;
    }
    Answer Send(char* data, std::size_t size, bool interactive = true) {
        if (m_module == nullptr) {
            Init();
        }
        return Answer(Process(data, size, interactive));
    }
    Answer Call(std::string_view request, bool interactive = true) {
        std::string own(request);
        return Send(own.data(), own.size(), interactive);
    }
    /// A request whose "fileDataSize" announces `raw`.
    Answer CallRaw(std::string_view members, std::string_view raw) {
        std::string own =
            "{" + std::string(members) + ",\"fileDataSize\":" + std::to_string(raw.size()) + "}";
        own += '\0';
        own += raw;
        return Send(own.data(), own.size());
    }

    void* m_module = nullptr;

  private:
    TemporaryDir m_directory;
    ScopedVariable m_variable;
};

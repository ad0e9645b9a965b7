// Requests as an attacker sends them. Every answer is well formed, nothing outside the request
// is touched, and the module goes on working.

#include "tests/common/GuardedBuffer.h"
#include "tests/module/ModuleLibrary.h"

#include <cstdio>

namespace {

const std::string kNul(1, '\0');

// Requests whose every beginning is sent.
const std::string kWhole[] = {
    R"({"mode":38,"clientId":"к\u043b\ud83d\ude00","extInitParams":"A=1;","test":false,"isAttached")"
    R"(:true,"certInclude":2,"hashAlg":"a","signatures":["QUJD","QQ=="],"comment":"\"\\\/\b"})",
    R"({"mode":14,"fileDataSize":4})" + kNul + "data" + kNul + "rest",
    R"({"mode":14,"fileDataEncodedSize":8,"clientId":"x","fileData":"SGVsbG8="})" + kNul + "tail",
    R"({"mode":14,"fileDataEncodedSize":8,"fileDataSize":3,"fileData":"SGVsbG8="})" + kNul + "raw",
    R"({"mode":36,"storeAddresses":[{"location":"sslm","address":"a","name":"b"}],"config":{"La)"
    R"(nguage":"En"},"PKIConfig":{},"currentStores":[{"name":"ZORNATempStore"}]})",
};

}  // namespace

class HostileRequestTest : public LibraryTest {
  protected:
    void ExpectAlive() {
        EXPECT_EQ(Call(R"({"mode":38})").text,
                  R"({"errorCode":0,"errorMessage":"DONE","certificates":["FooCertId"]})");
    }
};

TEST_F(HostileRequestTest, SurvivesEveryBeginningOfARequest) {
    const GuardedBuffer buffer(4096);
    for (const std::string& whole : kWhole) {
        SCOPED_TRACE(whole);
        const bool announcesText = whole.find("EncodedSize") != std::string::npos;
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            char* start = buffer.Hold(whole.substr(0, length));
            if (!announcesText) {
                buffer.MakeReadOnly();  // only an announced payload may be cut out in place
            }
            const Answer answer = Send(start, length);
            const std::size_t text = whole.find('\0');
            if (length < std::min(text, whole.size())) {
                EXPECT_EQ(answer.Code(), 16300U) << length;
            }
            EXPECT_TRUE(buffer.IsMarkedBefore(start)) << length;
        }
    }
    ExpectAlive();
}

TEST_F(HostileRequestTest, AnswersEachFaultWithItsCode) {
    const std::string deep(1000000, '[');
    struct FaultCase {
        const char* name;
        std::string request;
        unsigned code;
    };
    const FaultCase cases[] = {
        {"nothing", "", 16300},
        {"NUL only", kNul, 16300},
        {"no JSON", "hello", 16300},
        {"array", "[]", 16300},
        {"string", "\"a\"", 16300},
        {"number", "38", 16300},
        {"null", "null", 16300},
        {"trailing text", R"({"mode":38} x)", 16300},
        {"two objects", "{}{}", 16300},
        {"byte-order mark", "\xEF\xBB\xBF{}", 16300},
        {"single quotes", "{'mode':38}", 16300},
        {"comment", "{/**/}", 16300},
        {"lone surrogate", R"({"clientId":"\ud800"})", 16300},
        {"huge number", R"({"x":1e999})", 16300},
        {"open brackets", deep, 16300},
        {"open brackets in an object", "{\"a\":" + deep, 16300},
        {"empty object", "{}", 16303},
        {"malformed UTF-8", "{\"mode\":38,\"clientId\":\"\xFF\xC0\xAF\"}", 0},
        {"repeated key", R"({"mode":38,"mode":13})", 0},
        {"announced but no NUL", R"({"mode":14,"fileDataSize":0})", 16118},
        {"announced but absent", R"({"mode":14,"fileDataSize":1})" + kNul, 16118},
        {"announced far too much", R"({"mode":14,"fileDataSize":4294967295})" + kNul + "x", 16118},
        {"undecodable file data", R"({"mode":38,"fileData":"!!!!"})", 16118},
        {"store address of another type", R"({"mode":38,"storeAddress":[]})", 16300},
        {"store list of another type", R"({"mode":38,"storeAddresses":{}})", 0},
        // No Qlocurl.so lies beside this test.
        {"fetching without libcurl", R"({"mode":38,"fileDataUrl":"http://127.0.0.1:1/"})", 16302},
        {"sending without libcurl",
         R"({"mode":14,"uploadUrl":"http://127.0.0.1:1/","streamFinalChunk":true})", 16302},
        {"size hint with a sign", R"({"mode":38,"fileDataEncodedSize":-8,"fileData":"QUJD"})", 0},
        {"size hint beyond the text", R"({"mode":38,"fileDataEncodedSize":99,"fileData":"QUJD"})",
         0},
        {"size hint of 70 bits",
         R"({"mode":38,"fileDataEncodedSize":1180591620717411303424,"fileData":"QUJD"})", 0},
    };
    for (const FaultCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Call(c.request).Code(), c.code);
        ExpectAlive();
    }
    EXPECT_EQ(Send(nullptr, 0).Code(), 16300U);
    EXPECT_EQ(Send(nullptr, 100).Code(), 16300U);
    ExpectAlive();
}

TEST_F(HostileRequestTest, LeavesTheSettingsInForceAlone) {
    EXPECT_EQ(Call(R"({"mode":51,"config":{"AllowServicePrivateKeyAccess":true,"Language":"Ru"}})",
                   /*interactive=*/false)
                  .Code(),
              50U);
    EXPECT_EQ(Call(R"({"mode":13})").Message(), "ERROR Method not supported.");
}

TEST_F(HostileRequestTest, TakesRawDataBehindTheTextAsItCame) {
    // The text gets shorter when the announced payload is cut out; the raw octets stay where they
    // are.
    SetConfig("Language=En\nLogMode=3\n");
    std::string request =
        R"({"mode":14,"fileDataEncodedSize":8,"fileDataSize":3,"fileData":"SGVsbG8="})" + kNul +
        "raw";
    EXPECT_EQ(Send(request.data(), request.size()).Code(), 0U);
    const std::vector<LogLine> lines = LogRecorder::Take();
    EXPECT_NE(std::find(lines.begin(), lines.end(), LogLine{L"Request filedata : cmF3", false}),
              lines.end());
}

// A key of the wrong JSON type.
const char* const kWrongTypes[] = {
    R"({"mode":"38"})",
    R"({"mode":-1})",
    R"({"mode":38.0})",
    R"({"mode":4294967296})",
    R"({"mode":null})",
    R"({"clientId":1})",
    R"({"test":1})",
    R"({"streamId":"1"})",
    R"({"hashAlg":[]})",
    R"({"params":{}})",
    R"({"sendSignData":false})",
    R"({"signatures":"QUJD"})",
    R"({"signatures":[1]})",
    R"({"fileDataUrl":1})",
    R"({"fileDataSize":"1"})",
    R"({"uploadUrl":1})",
};

#ifdef MOD_FOO_REPORT_JSON_TYPES
TEST_F(HostileRequestTest, ReportsAKeyOfTheWrongType) {
    for (const char* request : kWrongTypes) {
        EXPECT_EQ(Call(request).Code(), 16300U) << request;
    }
    ExpectAlive();
}
#else
using HostileRequestDeathTest = HostileRequestTest;

TEST_F(HostileRequestDeathTest, StopsAtAKeyOfTheWrongTypeAndNamesIt) {
    Init(1, [](const wchar_t* line, bool) { return std::fprintf(stderr, "%ls\n", line) > 0; });
    for (const char* request : kWrongTypes) {
        const std::string text = request;
        const std::string key = text.substr(1, text.find(':') - 1);
        EXPECT_DEATH(Call(request), "wrong JSON type of " + key) << request;
    }
}
#endif

// What strangers make of few octets: families of payloads whose records are many times as long. No
// request takes more than 20 times its octets of memory, and a megabyte. Each is sent by a process
// of its own, where nothing else takes any.

#include "tests/asn1/DerWriter.h"
#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <cstring>
#include <fstream>
#include <functional>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kMemoryPerOctet = 20;
constexpr std::size_t kMemoryAlways = 1 << 20;

const Octets kEmpty = {0x30, 0x00};
const Octets kWrong = {0x05, 0x00};
const Octets kNoBits = {0x03, 0x01, 0x00};
const Octets kOne = {0x02, 0x01, 0x01};
const Octets kData = {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 7, 1};
const Octets kTime = Tlv(0x17, Text("240101000000Z"));
const Octets kTinyCertificate =
    Tlv(0x30, Tlv(0x30, {kOne, kEmpty, kEmpty, kEmpty, kEmpty, kEmpty}));

Octets Repeat(const Octets& unit, std::size_t size) {
    Octets all;
    while (all.size() < size) {
        all.insert(all.end(), unit.begin(), unit.end());
    }
    return all;
}

Octets ContentInfo(unsigned char type, const Octets& content) {
    return Tlv(0x30,
               {{0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 7, type}, Tlv(0xA0, content)});
}
Octets Envelope(const Octets& recipients) {
    return ContentInfo(3, Tlv(0x30, {kOne, Tlv(0x31, recipients), Tlv(0x30, kData)}));
}
Octets Signed(const Octets& signers, const Octets& certificates = {}) {
    return ContentInfo(2, Tlv(0x30, {kOne, Tlv(0x31, Octets()), Tlv(0x30, kData),
                                     Tlv(0xA0, certificates), Tlv(0x31, signers)}));
}
Octets Signer(const Octets& attributes, const Octets& unsignedAttributes = {}) {
    return Tlv(0x30, {kOne, Tlv(0x30, {kEmpty, kOne}), kEmpty, Tlv(0xA0, attributes), kEmpty,
                      Tlv(0x04, Octets()), Tlv(0xA1, unsignedAttributes)});
}
Octets Countersigned(const Octets& signers) {
    const Octets type = {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 9, 6};
    return Signer({}, Tlv(0x30, {type, Tlv(0x31, signers)}));
}
// An attribute, or an extension, of a type that nobody knows.
Octets Unknown(unsigned char tag, const Octets& value) {
    return Tlv(0x30, {{0x06, 0x02, 0x2A, 0x03}, Tlv(tag, value)});
}
// Its outline is indented as deeply as one may be: 36 characters an octet.
Octets Deep() {
    Octets value = Repeat(kEmpty, 1800);
    for (int i = 0; i < 30; ++i) {
        value = Tlv(0x30, value);
    }
    return value;
}
Octets Certificate(const Octets& extensions, const Octets& name = kEmpty) {
    const Octets tbs =
        Join({kOne, kEmpty, name, kEmpty, name, kEmpty, Tlv(0xA3, Tlv(0x30, extensions))});
    return Tlv(0x30, {Tlv(0x30, tbs), kEmpty, kNoBits});
}
Octets AttributeCertificate(const Octets& attributes) {
    const Octets info = Join({kOne, Tlv(0x30, Tlv(0xA1, Octets())), Tlv(0xA0, kEmpty), kEmpty, kOne,
                              Tlv(0x30, {kTime, kTime}), Tlv(0x30, attributes)});
    return Tlv(0x30, {Tlv(0x30, info), kEmpty, kNoBits});
}
Octets Name(unsigned char character, std::size_t size) {
    const Octets value = Tlv(0x0C, Octets(1000, character));
    return Tlv(0x30, Repeat(Tlv(0x31, Tlv(0x30, {{0x06, 0x03, 0x55, 0x04, 0x03}, value})), size));
}
Octets Crl(const Octets& entries) {
    return Tlv(0x30, {Tlv(0x30, {kEmpty, kEmpty, kTime, Tlv(0x30, entries)}), kEmpty, kNoBits});
}
std::string Encoded(const Octets& octets) {
    return Base64({octets.begin(), octets.end()});
}
Octets Pem(const Octets& object) {
    return Text("-----BEGIN -----" + Encoded(object));
}

struct Family {
    const char* name;
    int mode;
    std::function<Octets(std::size_t size)> make;
    bool isCounted = true;  // the answer says how many more there are
    const char* members = "";
};

const Family kFamilies[] = {
    {"recipients", 41, [](std::size_t n) { return Envelope(Repeat(kEmpty, n)); }},
    {"recipients of one agreement", 41,
     [](std::size_t n) {
         const Octets keys = Tlv(0x30, Repeat(kEmpty, n));
         return Envelope(Tlv(0xA1, {kOne, Tlv(0xA0, kWrong), kEmpty, keys}));
     }},
    {"certificates", 22, [](std::size_t n) { return Repeat(kTinyCertificate, n); }},
    {"PEM blocks", 22, [](std::size_t n) { return Repeat(Pem(kTinyCertificate), n); }},
    {"PEM blocks of nothing", 22,
     [](std::size_t n) {
         return Join({Repeat(Pem({0}), n), Pem(kTinyCertificate)});
     },
     false},
    {"certificates that are set", 21, [](std::size_t n) { return Repeat(kTinyCertificate, n); },
     false},
    {"extensions", 22, [](std::size_t n) { return Certificate(Repeat(kEmpty, n)); }},
    {"extensions of many", 22,
     [](std::size_t n) { return Repeat(Certificate(Repeat(kEmpty, 2000)), n); }},
    {"outlines", 22, [](std::size_t n) { return Certificate(Repeat(Unknown(0x04, Deep()), n)); }},
    {"digits", 22,
     [](std::size_t n) { return Certificate(Repeat(Unknown(0x04, Octets(n / 900, 0xFF)), n)); },
     false},
    {"names of hidden characters", 22,
     [](std::size_t n) { return Certificate({}, Name(0x01, n / 2)); }, false},
    {"names of quotes", 22, [](std::size_t n) { return Certificate({}, Name('"', n / 2)); }, false},
    {"attributes", 22, [](std::size_t n) { return AttributeCertificate(Repeat(kEmpty, n)); }},
    {"signers", 29, [](std::size_t n) { return Signed(Repeat(kWrong, n)); }},
    {"signed attributes", 29,
     [](std::size_t n) { return Signed(Repeat(Signer(Repeat(kEmpty, 2000)), n)); }},
    {"outlines of signed attributes", 29,
     [](std::size_t n) { return Signed(Repeat(Signer(Repeat(Unknown(0x31, Deep()), 9000)), n)); }},
    {"countersigners", 29, [](std::size_t n) { return Signed(Countersigned(Repeat(kWrong, n))); }},
    {"countersigners of countersigners", 29,
     [](std::size_t n) {
         Octets signers = Repeat(Signer({}), n);
         for (int level = 0; level < 14; ++level) {
             signers = Countersigned(signers);
         }
         return Signed(signers);
     }},
    {"one certificate of many signers", 29,
     [](std::size_t n) {
         const Octets certificate = Certificate(Repeat(Unknown(0x04, kWrong), n / 4));
         return Signed(Repeat(Signer({}), n / 4 * 3), certificate);
     },
     false},
    {"certificates of nobody", 29,
     [](std::size_t n) { return Signed(Signer({}), Repeat(kTinyCertificate, n)); }},
    {"messages", 29, [](std::size_t n) { return Repeat(Pem(Signed(kEmpty)), n); }},
    {"entries", 23, [](std::size_t n) { return Crl(Repeat(kEmpty, n)); }, true,
     R"(,"extInitParams":"CRL_COUNT=4294967295")"},
    {"outlines of entries", 23,
     [](std::size_t n) {
         const Octets extensions = Tlv(0x30, Unknown(0x04, Deep()));
         return Crl(Repeat(Tlv(0x30, {kOne, kTime, extensions}), n));
     },
     true, R"(,"extInitParams":"CRL_COUNT=4294967295")"},
};

std::string RawRequest(const Family& family, std::size_t size) {
    const Octets payload = family.make(size);
    std::string request = "{\"mode\":" + std::to_string(family.mode) + family.members +
                          ",\"fileDataSize\":" + std::to_string(payload.size()) + "}";
    request += '\0';
    request.append(payload.begin(), payload.end());
    return request;
}

// A request of `count` elements in an array, "," between them.
std::string ListRequest(const std::string& head, const std::string& element, std::size_t size) {
    std::string request = head + "[";
    while (request.size() < size) {
        request += element + ",";
    }
    request.back() = ']';
    return request + "}";
}

// What one request cost in a process of its own.
struct Cost {
    std::size_t memory = 0;  // at its peak, the request's own octets included
    std::size_t answer = 0;
    bool isCounted = false;
    unsigned code = 1;
};

std::size_t StatusOctets(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            return std::stoul(line.substr(key.size())) * 1024;
        }
    }
    return 0;
}

// Brings in what is mapped from files: how much of that the kernel brings beside a page that is
// asked for hangs on what its cache holds, and code is no memory of a request.
void TouchMappedFiles() {
    const long page = ::sysconf(_SC_PAGESIZE);
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        char* rest = nullptr;
        const unsigned long begin = std::strtoul(line.c_str(), &rest, 16);
        const unsigned long end = std::strtoul(rest + 1, &rest, 16);
        if (rest[1] == 'r' && line.find(" /") != std::string::npos) {
            for (unsigned long at = begin; at < end; at += static_cast<unsigned long>(page)) {
                static_cast<void>(*reinterpret_cast<const volatile char*>(at));
            }
        }
    }
}

class AnswerMemoryTest : public LibraryTest {
  protected:
    // \param first  sent before, so that code and tables are there.
    Cost CostOf(std::string first, std::string request) {
        Init();
        int ends[2];
        EXPECT_EQ(0, ::pipe(ends));
        const pid_t child = ::fork();
        if (child == 0) {
            const Cost cost = Measure(first, request);
            const bool isWritten = ::write(ends[1], &cost, sizeof cost) == sizeof cost;
            ::_exit(isWritten ? 0 : 1);
        }
        Cost cost;
        ::close(ends[1]);
        EXPECT_EQ(static_cast<ssize_t>(sizeof cost), ::read(ends[0], &cost, sizeof cost));
        ::close(ends[0]);
        ::waitpid(child, nullptr, 0);
        return cost;
    }

    void ExpectBounded(const char* name, const std::string& first, const std::string& request,
                       unsigned code, bool isCounted) {
        SCOPED_TRACE(std::string(name) + ", octets: " + std::to_string(request.size()));
        const Cost cost = CostOf(first, request);
        const std::size_t most = kMemoryAlways + kMemoryPerOctet * request.size();
        EXPECT_EQ(cost.code, code);
        EXPECT_LE(cost.answer, most);
        EXPECT_LE(cost.memory, most);
        EXPECT_TRUE(cost.isCounted || !isCounted);
    }

  private:
    Cost Measure(std::string& first, std::string& request) const {
        std::free(Process(first.data(), first.size()).response);
        ::malloc_trim(0);
        TouchMappedFiles();
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew
        const std::size_t before = StatusOctets("VmRSS:");
        const CMPacket packet = Process(request.data(), request.size());
        const std::size_t peak = StatusOctets("VmHWM:");
        const bool isCounted = std::strstr(packet.response, "\u2026 and ") != nullptr;
        return {peak - before + request.size(), packet.responseSize, isCounted,
                Answer(packet).Code()};
    }
};

TEST_F(AnswerMemoryTest, NoFamilyTakesMoreThanAFewTimesItsOctets) {
    for (const Family& family : kFamilies) {
        for (const std::size_t size : {20000U, 200000U, 1000000U}) {
            ExpectBounded(family.name, RawRequest(family, 4000), RawRequest(family, size),
                          /*code=*/0, family.isCounted && size == 1000000);
        }
    }
}

TEST_F(AnswerMemoryTest, NorDoManyMessagesAndStores) {
    constexpr unsigned kWrongJson = 16300;
    const std::string message = '"' + Encoded(Signed(kEmpty)) + '"';
    const std::string messages = R"({"mode":57,"signatures":)";
    const std::string stores = R"({"mode":36,"storeAddresses":)";
    const std::string unread = R"({"mode":38,"unread":)";
    const std::string store = R"({"location":"sss","name":"a"})";
    const std::string first = ListRequest(messages, message, 4000);
    for (const std::size_t size : {20000U, 200000U, 1000000U}) {
        ExpectBounded("messages", first, ListRequest(messages, message, size), 0, false);
        std::string none = ListRequest(messages, "\"AA==\"", size);
        none.replace(none.find('[') + 1, 0, message + ',');
        ExpectBounded("objects that are no messages", first, none, 0, false);
        const std::string few = ListRequest(stores, store, 4000);
        ExpectBounded("stores", few, ListRequest(stores, store, size), 0, false);
        ExpectBounded("stores of nothing", few, ListRequest(stores, "{}", size), kWrongJson, false);
        ExpectBounded("no stores", few, ListRequest(stores, "0", size), kWrongJson, false);
        ExpectBounded("numbers", few, ListRequest(unread, "0", size), 0, false);
        ExpectBounded("open brackets", few, unread + std::string(size, '['), kWrongJson, false);
    }
}

}  // namespace

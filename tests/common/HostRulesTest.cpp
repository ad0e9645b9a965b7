#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HostRules.h"
#include "common/HttpUrl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Patterns = std::vector<std::wstring>;

const Patterns kPublic = {L"*", L"!@internal"};
const Patterns kOurs = {L"*.Example.org", L"example.org.", L"192.0.2.0/24", L"!secret.example.org"};

}  // namespace

TEST(HostRulesTest, JudgesTheHostOfAUrlInEverySpelling) {
    enum { kNo, kMaybe, kYes };  // kMaybe: only the address will tell
    const struct {
        const Patterns& patterns;
        const wchar_t* host;
        int wanted;
    } cases[] = {
        {kPublic, L"example.org", kYes},
        {kPublic, L"8.8.8.8", kYes},
        {kPublic, L"[2a00:1450::1]", kYes},
        {kPublic, L"127.0.0.1", kNo},
        {kPublic, L"127.1", kNo},
        {kPublic, L"127.0.0.1.", kNo},
        {kPublic, L"2130706433", kNo},
        {kPublic, L"0x7f000001", kNo},
        {kPublic, L"0x7f.1.", kNo},
        {kPublic, L"0177.0.0.1", kNo},
        {kPublic, L"%31%32%37.0.0.1", kNo},
        {kPublic, L"１２７。０。０。１", kNo},
        {kPublic, L"user:8.8.8.8@10.1.2.3", kNo},
        {kPublic, L"0.0.0.0", kNo},
        {kPublic, L"169.254.169.254", kNo},
        {kPublic, L"172.32.0.1", kYes},
        {kPublic, L"172.31.255.255", kNo},
        {kPublic, L"[::1]", kNo},
        {kPublic, L"[::]", kNo},
        {kPublic, L"[::ffff:10.0.0.1]", kNo},
        {kPublic, L"[::ffff:0a00:0001]", kNo},
        {kPublic, L"[::10.0.0.1]", kNo},
        {kPublic, L"[64:ff9b::10.0.0.1]", kNo},
        {kPublic, L"[64:ff9b::8.8.8.8]", kYes},
        {kPublic, L"[2002:0a00:0001::1]", kNo},
        {kPublic, L"[fd00::1]", kNo},
        {kPublic, L"[fe80::1%25eth0]", kNo},
        {kPublic, L"LocalHost.", kNo},
        {kPublic, L"a.localhost", kNo},
        {kOurs, L"example.org", kYes},
        {kOurs, L"EXAMPLE.org.", kYes},
        {kOurs, L"a.b.example.org", kYes},
        {kOurs, L"secret.example.org.", kNo},
        {kOurs, L"notexample.org", kMaybe},
        {kOurs, L"example.org.evil.net", kMaybe},
        {kOurs, L"example.org@evil.net", kMaybe},
        {kOurs, L"evil.net#.example.org", kMaybe},
        {kOurs, L"192.0.2.77", kYes},
        {kOurs, L"192.0.3.77", kNo},
        {{L"*.пример.рф"}, L"А.Пример.РФ", kYes},
        {{L"*.пример.рф"}, L"xn--80a.xn--e1afmkfd.xn--p1ai", kYes},
        {{L"*", L"!::/0"}, L"[2a00::1]", kNo},
        {{L"*", L"!::/0"}, L"[::ffff:8.8.8.8]", kYes},
        {{L"*", L"!::ffff:10.0.0.0/104"}, L"10.1.2.3", kNo},
        {{L"*", L"!64:ff9b::/96"}, L"[64:ff9b::8.8.8.8]", kNo},
        {{L"!a.org", L"*"}, L"a.org", kNo},
        {{L"!10.0.0.0/8"}, L"a.org", kNo},
        {{}, L"a.org", kNo},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.host)));
        const std::string host =
            ca::ParseHttpUrl(L"http://" + std::wstring(c.host) + L"/path").host;
        const ca::HostRules rules(c.patterns);
        EXPECT_EQ(rules.Allows(host), c.wanted == kYes);
        EXPECT_EQ(rules.MightAllow(host), c.wanted != kNo);
    }
}

TEST(HostRulesTest, JudgesTheAddressThatAHostLeadsTo) {
    const struct {
        const Patterns& patterns;
        const char* host;
        const char* address;
        bool isAllowed;
    } cases[] = {
        {kPublic, "example.org", "8.8.8.8", true},
        {kPublic, "example.org", "127.0.0.1", false},
        {kPublic, "example.org", "::ffff:127.0.0.1", false},
        {kPublic, "example.org", "fe80::1", false},
        {kOurs, "a.example.org", "10.0.0.1", true},
        {kOurs, "other.org", "192.0.2.1", true},
        {kOurs, "other.org", "192.0.3.1", false},
        {kOurs, "secret.example.org", "192.0.2.1", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ca::HostRules(c.patterns).AllowsAt(c.host, *ca::IpAddress::Parse(c.address)),
                  c.isAllowed)
            << c.host << ' ' << c.address;
    }
}

TEST(HostRulesTest, RefusesWhatIsNoPattern) {
    for (const std::wstring& text : {std::wstring(),
                                     std::wstring(L"!"),
                                     std::wstring(L"!!a.org"),
                                     std::wstring(L"a*.org"),
                                     std::wstring(L"*.*.org"),
                                     std::wstring(L"*."),
                                     std::wstring(L"**"),
                                     std::wstring(L"a..b"),
                                     std::wstring(L"http://a.org"),
                                     std::wstring(L"a.org:80"),
                                     std::wstring(L"a.org/8"),
                                     std::wstring(L"10.0.0.0/33"),
                                     std::wstring(L"10.0.0.0/"),
                                     std::wstring(L"10.0.0/8"),
                                     std::wstring(L"10.0.0.0/+8"),
                                     std::wstring(L"::/129"),
                                     std::wstring(L"[::1]"),
                                     std::wstring(L"0x7f.1"),
                                     std::wstring(L"2130706433"),
                                     std::wstring(L"*.0.0.1"),
                                     std::wstring(L"@private"),
                                     std::wstring(L"a.org\0", 6),
                                     std::wstring(L" a.org"),
                                     std::wstring(9000, L'a')}) {
        EXPECT_FALSE(ca::HostRules::IsPattern(text)) << testing::PrintToString(text);
    }
}

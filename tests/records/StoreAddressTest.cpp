#include "common/ErrorCodes.h"
#include "records/StoreAddress.h"
#include "tests/records/RecordTesting.h"

#include <QtNetwork/QHostInfo>

#include <algorithm>
#include <utility>

namespace {

using ca::StoreAddress;

TEST(StoreAddressTest, FindsLocationsInAnyLetterCase) {
    const wchar_t* codes[] = {L"",       L"SSCU", L"sscs", L"SsLm",  L"sslmgp",
                              L"sscugp", L"sss",  L"ssu",  L"sslme", L"Remote"};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(i, StoreAddress::ParseLoc(codes[i]));
    }
    for (const wchar_t* unknown : {L"ss", L"sslmgpx", L" sscu", L"0"}) {
        EXPECT_EQ(ca::kLocationNone, StoreAddress::ParseLoc(unknown));
    }
    EXPECT_EQ(ca::kLocationNone, StoreAddress::ParseLoc(nullptr));
}

TEST(StoreAddressTest, BringsTheHostIntoTheFormOfItsLocation) {
    struct HostCase {
        std::vector<int> locations;
        const wchar_t* host;
        const wchar_t* expected;
    };
    const HostCase cases[] = {
        {{0, 1, 2, 5, 8}, L"\\\\srv", L""},
        {{0, 1, 2, 5, 8}, nullptr, L""},
        {{3, 4}, L"", L"\\\\LOCALHOST"},
        {{3, 4}, nullptr, L"\\\\LOCALHOST"},
        {{3, 4}, L"srv", L"\\\\srv"},
        {{3, 4, 6, 7}, L"\\srv", L"\\\\srv"},
        {{3, 4, 6, 7}, L"\\\\srv", L"\\\\srv"},
        {{3, 4, 6, 7}, L"\\\\\\srv", L"\\\\\\srv"},
        {{3, 4, 6, 7}, L"\\", L"\\\\"},
        {{6, 7}, L"", L""},
        {{6, 7}, L"srv", L"srv"},
        {{6, 7}, L"a\\b", L"\\\\a\\b"},
        {{9}, L"\\http://ca:80", L"\\http://ca:80"},
        {{9}, L"", L""},
    };
    for (const HostCase& c : cases) {
        for (const int location : c.locations) {
            SCOPED_TRACE(location);
            StoreAddress store;
            store.location = location;
            EXPECT_TRUE(store.SetAddress(c.host));
            EXPECT_EQ(c.expected, store.address);
        }
    }
    for (const int location : {10, -1}) {
        StoreAddress corrupt;
        corrupt.address = L"kept";
        corrupt.location = location;
        EXPECT_FALSE(corrupt.SetAddress(L"srv"));
        EXPECT_EQ(L"kept", corrupt.address);
        EXPECT_STREQ(L"", corrupt.GetLocation());
    }
}

struct StateCase {
    const char* name;
    StoreAddress store;
    std::wstring address;
    std::wstring storeName;
    int location;
    bool valid;
    bool empty;
};

StoreAddress Parsed(const wchar_t* text) {
    StoreAddress store(L"remote", L"old", L"old");
    store.ParseAddress(text);
    return store;
}

TEST(StoreAddressTest, BuildsFromPartsAndFromText) {
    const StateCase cases[] = {
        {"fresh", {}, L"", L"", 0, false, true},
        {"no code", {nullptr, L"h", L"n"}, L"", L"", 0, false, true},
        {"user", {L"sscu", L"srv", L"My"}, L"", L"My", 1, true, false},
        {"machine", {L"SSLM", L"", L"Root"}, L"\\\\LOCALHOST", L"Root", 3, true, false},
        {"unknown code", {L"x", L"srv", L"My"}, L"", L"My", 0, false, false},
        {"temporary", {L"", L"srv", L"zornatempstore"}, L"", L"zornatempstore", 0, true, true},
        {"by machine flag", {L"Root", true}, L"\\\\LOCALHOST", L"Root", 3, true, false},
        {"by user flag", {L"Root", false}, L"", L"Root", 1, true, false},
        {"text", Parsed(L"sscu:My"), L"", L"My", 1, true, false},
        {"text with host", Parsed(L"SSLM:\\\\HOST\\Root"), L"\\\\HOST", L"Root", 3, true, false},
        {"text without host", Parsed(L"sslm:Root"), L"\\\\LOCALHOST", L"Root", 3, true, false},
        {"longer host", Parsed(L"ssu:\\\\h\\u\\My"), L"\\\\h\\u", L"My", 7, true, false},
        {"colon in the name", Parsed(L"sss:svc:My"), L"", L"svc:My", 6, true, false},
        {"unknown location", Parsed(L"zz:My"), L"", L"My", 0, false, false},
        {"name alone", Parsed(L"My"), L"", L"My", 0, false, false},
        {"nothing", Parsed(L""), L"", L"", 0, false, false},
        {"null", Parsed(nullptr), L"", L"", 0, false, true},
    };
    for (const StateCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.address, c.store.address);
        EXPECT_EQ(c.storeName, c.store.name);
        EXPECT_EQ(c.location, c.store.location);
        EXPECT_EQ(c.valid, c.store.IsValid());
        EXPECT_EQ(c.empty, c.store.IsEmpty());
    }
}

TEST(StoreAddressTest, KnowsTheSpecialStores) {
    EXPECT_TRUE(StoreAddress(L"sscu", L"", L"my").IsMy());
    EXPECT_FALSE(StoreAddress(L"sslm", L"", L"my").IsMy());
    EXPECT_FALSE(StoreAddress(L"sscu", L"", L"mine").IsMy());
    EXPECT_TRUE(StoreAddress(L"", L"", L"ZORNATEMPSTORE").IsTempStore());
    EXPECT_TRUE(StoreAddress(L"", L"", L"orvexstore").IsOrvexStore());
    EXPECT_EQ(nullptr, StoreAddress(L"sscu", L"", nullptr).GetName());
    EXPECT_STREQ(L"My", StoreAddress(L"sscu", L"", L"My").GetName());
}

TEST(StoreAddressTest, TellsThisMachineFromOthers) {
    const std::wstring own = QHostInfo::localHostName().toStdWString();
    std::wstring ownLabel = own.substr(0, own.find(L'.'));
    std::transform(ownLabel.begin(), ownLabel.end(), ownLabel.begin(), ::towupper);
    struct LocalCase {
        const wchar_t* code;
        std::wstring host;
        bool local;
    };
    const LocalCase cases[] = {
        {L"", L"", true},
        {L"sscu", L"srv", true},
        {L"sslme", L"srv", true},
        {L"remote", L"localhost", false},
        {L"sslm", L"", true},
        {L"sslm", L"\\\\LocalHost\\\\", true},
        {L"sslmgp", L"127.0.0.1", true},
        {L"sss", L"127.0.0.1", true},
        {L"sslm", L"127.0.0.2", false},
        {L"sslm", ownLabel + L".elsewhere.example", true},
        {L"ssu", ownLabel, true},
        {L"sslm", ownLabel + L"-x", false},
        {L"ssu", L"", false},
    };
    for (const LocalCase& c : cases) {
        const StoreAddress store(c.code, c.host.c_str(), L"Root");
        EXPECT_EQ(c.local, store.IsLocal()) << StoreAddress::ParseLoc(c.code);
        EXPECT_EQ(c.local || c.host.empty(), store.GetAddress() == nullptr);
    }
}

TEST(StoreAddressTest, JoinsHostAndName) {
    EXPECT_EQ(L"\\\\srv-of-others\\Root",
              StoreAddress(L"sslm", L"srv-of-others", L"Root").GetFullAddress());
    EXPECT_EQ(L"Root", StoreAddress(L"sslm", L"localhost", L"Root").GetFullAddress());
    EXPECT_EQ(L"ca:80", StoreAddress(L"remote", L"ca:80", L"Root").GetFullAddress());
    EXPECT_EQ(ca::kErrStoreAddress,
              ErrorOf([] { StoreAddress(L"remote", L"", L"Root").GetFullAddress(); }));
}

// Deliberate: a comparison that the fields decide is stored in the left record.
TEST(StoreAddressTest, MarksTheLeftRecordByTheComparison) {
    const StoreAddress user(L"sscu", L"", L"My");
    StoreAddress invalidUser = user;
    invalidUser.valid = false;
    StoreAddress validEmpty;
    validEmpty.valid = true;
    struct EqualityCase {
        const char* name;
        StoreAddress left;
        StoreAddress right;
        bool equal;
        bool leftValidAfter;
    };
    const EqualityCase cases[] = {
        {"same", user, user, true, true},
        {"name in another case", user, {L"sscu", L"", L"MY"}, true, true},
        {"other name", user, {L"sscu", L"", L"Root"}, false, false},
        {"other location", user, {L"sscs", L"", L"My"}, false, false},
        {"host in another case", {L"sslm", L"a", L"My"}, {L"sslm", L"A", L"My"}, false, false},
        {"right invalid", user, invalidUser, false, false},
        {"left invalid, fields equal", invalidUser, user, true, true},
        {"left invalid, fields differ", invalidUser, {L"sscs", L"", L"My"}, false, false},
        {"both invalid", invalidUser, invalidUser, false, false},
        {"both fresh", {}, {}, false, false},
        {"both empty, left valid", validEmpty, {}, true, true},
        {"both empty, right valid", {}, validEmpty, true, false},
        {"both empty and valid", validEmpty, validEmpty, true, true},
        {"empty and not", validEmpty, user, false, false},
    };
    for (const EqualityCase& c : cases) {
        SCOPED_TRACE(c.name);
        StoreAddress left = c.left;
        EXPECT_EQ(c.equal, left == c.right);
        EXPECT_EQ(c.leftValidAfter, left.IsValid());
    }
    StoreAddress left = user;
    StoreAddress right = user;
    EXPECT_TRUE(left == right);
}

TEST(StoreAddressTest, ReadsAndWritesItsJsonForm) {
    struct JsonCase {
        const char* text;
        const char* written;
        bool valid;
    };
    const JsonCase cases[] = {
        {R"({"location":"sscu","address":"","name":"My"})",
         R"({"location":"sscu","address":"","name":"My"})", true},
        {R"({"name":"Корень","address":"srv","location":"SSLM","x":1})",
         R"({"location":"sslm","address":"\\\\srv","name":"Корень"})", true},
        {R"({"location":"zz","address":"srv","name":"My"})",
         R"({"location":"","address":"","name":"My"})", true},
        {R"({"location":"sslm","name":"My"})",
         R"({"location":"sslm","address":"\\\\LOCALHOST","name":"My"})", true},
        {R"({"name":"My"})", R"({"location":"","address":"","name":"My"})", false},
        {"{}", R"({"location":"","address":"","name":""})", false},
    };
    for (const JsonCase& c : cases) {
        SCOPED_TRACE(c.text);
        StoreAddress store;
        EXPECT_EQ("{}", ToText(store));
        FromText(store, c.text);
        EXPECT_EQ(c.written, ToText(store));
        EXPECT_EQ(c.valid, store.IsValid());
        EXPECT_FALSE(store.IsEmpty());
    }
    StoreAddress kept(L"sslm", L"srv", L"Root");
    FromText(kept, R"({"name":"My"})");
    EXPECT_EQ(R"({"location":"sslm","address":"\\\\srv","name":"My"})", ToText(kept));
}

TEST(StoreAddressTest, RefusesWrongTypesWithoutAChange) {
    StoreAddress store(L"sslm", L"srv", L"Root");
    const std::string before = ToText(store);
    const char* wrong[] = {"null",           "[]",
                           "\"sscu:My\"",    R"({"name":"x","location":1})",
                           R"({"name":{}})", R"({"location":"sscu","name":"x","address":null})"};
    for (const char* text : wrong) {
        EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(store, text); })) << text;
        EXPECT_EQ(before, ToText(store));
    }
}

TEST(StoreAddressesTest, AppendsTheAddressesOfAnArray) {
    ca::StoreAddresses stores;
    FromText(stores, R"([{"location":"sscu","address":"","name":"a"}])");
    for (const char* ignored : {"{}", "null", "\"sscu:My\"", "5"}) {
        FromText(stores, ignored);
    }
    FromText(stores, R"([{"location":"sscs","address":"","name":"b"}])");
    for (const char* wrong : {"[{},[]]", R"(["sscu:My"])", R"([{"name":1}])"}) {
        EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(stores, wrong); })) << wrong;
    }
    stores.emplace_back();
    EXPECT_EQ(R"([{"location":"sscu","address":"","name":"a"},)"
              R"({"location":"sscs","address":"","name":"b"},{}])",
              ToText(stores));
}

}  // namespace

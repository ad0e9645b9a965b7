#include "records/text/GeneralNameText.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class GeneralNameTextTest : public EnglishTest {
  protected:
    static std::wstring Say(Octets name) {
        ca::CTextLines lines;
        ca::SayGeneralName(ca::FirstElement(std::span(name)), lines);
        return lines.Take();
    }
};

Octets Printable(const char* text) {
    return Tlv(0x13, Text(text));
}

Octets ExtensionAttribute(unsigned char type, const Octets& value) {
    return Tlv(0x30, {{0x80, 0x01, type}, Tlv(0xA1, value)});
}

TEST_F(GeneralNameTextTest, SaysAllOfAnX400Address) {
    const Octets standard =
        Tlv(0x30,
            {Tlv(0x61, Printable("RU")), Tlv(0x62, Tlv(0x12, Text("7"))), Tlv(0x80, Text("1234")),
             Tlv(0x81, Text("term")), Tlv(0xA2, Printable("prmd")), Tlv(0x83, Text("Org")),
             Tlv(0x84, Text("42")), Tlv(0xA5, {Tlv(0x80, Text("Ivanov")), Tlv(0x81, Text("Ivan"))}),
             Tlv(0xA6, {Printable("Unit"), Printable("Sub")})});
    const Octets domain = Tlv(0x30, Tlv(0x30, {Printable("type"), Printable("value")}));
    const Octets street = Tlv(0x31, {Printable("Street 1"), Tlv(0x14, {0xC9})});
    const Octets extensions = Tlv(
        0x31, {ExtensionAttribute(1, Printable("cn")), ExtensionAttribute(17, street),
               ExtensionAttribute(23, {0x02, 0x01, 0x03}), ExtensionAttribute(99, Printable("x"))});
    EXPECT_EQ(
        L"X.400 address:\n  C: RU\n  A: 7\n  P: prmd\n  O: Org\n  OU1: Unit\n  OU2: Sub\n"
        L"  S: Ivanov\n  G: Ivan\n  X.121: 1234\n  T-ID: term\n  N-ID: 42\n  DDA:type: value\n"
        L"  CN: cn\n  PD-STREET: Street 1, \u00C9\n  T-TY: 3\n  [99]: x",
        Say(Tlv(0xA3, {standard, domain, extensions})));
}

TEST_F(GeneralNameTextTest, SaysAnEdiPartyName) {
    const Octets party = Tlv(0xA1, Printable("party"));
    EXPECT_EQ(L"EDI party name:\n  Assigned by: assigner\n  Party: party",
              Say(Tlv(0xA5, {Tlv(0xA0, Tlv(0x0C, Text("assigner"))), party})));
    EXPECT_EQ(L"EDI party name:\n  Party: party", Say(Tlv(0xA5, party)));
}

TEST_F(GeneralNameTextTest, OutlinesWhatCouldNotBeRead) {
    EXPECT_EQ(L"X.400 address:\n  Unreadable value:\n    [3]\n      NULL",
              Say({0xA3, 0x02, 0x05, 0x00}));
    EXPECT_EQ(
        L"X.400 address:\n  C: RU\n  Unreadable value:\n    [3]\n      SEQUENCE\n"
        L"        [APPLICATION 1]\n          PRINTABLE STRING: RU\n      NULL",
        Say(Tlv(0xA3, {Tlv(0x30, Tlv(0x61, Printable("RU"))), {0x05, 0x00}})));
    EXPECT_EQ(L"Unreadable value: [9]: 61", Say({0x89, 0x01, 0x61}));
}

}  // namespace

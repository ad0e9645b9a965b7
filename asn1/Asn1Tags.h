#pragma once

/// Identifier octets of the universal types that have a class (ITU-T X.680, 8.4).
enum Asn1Tag : unsigned char {
    kAsn1Boolean = 0x01,
    kAsn1Integer = 0x02,
    kAsn1BitString = 0x03,
    kAsn1OctetString = 0x04,
    kAsn1Null = 0x05,
    kAsn1ObjectIdentifier = 0x06,
    kAsn1Utf8String = 0x0C,
    kAsn1NumericString = 0x12,
    kAsn1PrintableString = 0x13,
    kAsn1TeletexString = 0x14,
    kAsn1Ia5String = 0x16,
    kAsn1UtcTime = 0x17,
    kAsn1GeneralizedTime = 0x18,
    kAsn1UnicodeString = 0x1E,
    kAsn1ConstructedOctetString = 0x24,
    kAsn1Sequence = 0x30,
    kAsn1Set = 0x31,
};

#include "asn1/Elements.h"
#include "asn1/ocsp/OcspRequest.h"
#include "asn1/ocsp/OcspResponse.h"
#include "common/Encode.h"
#include "records/text/Decoded.h"
#include "records/text/OcspText.h"
#include "records/text/TimeText.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/records/RecordTesting.h"

#include <string>

namespace {

// About the serial numbers 1 (known), 2 (revoked) and 3 (unknown), with a nonce.
constexpr const char* kResponse =
    "MIICGQoBAKCCAhIwggIOBgkrBgEFBQcwAQEEggH/MIIB+zCCAaGhIzAhMQswCQYDVQQGEwJSVTESMBAGA1UEAwwJQXV0"
    "aG9yaXR5GA8yMDI2MTEyMTA3NDA0N1owggFCMGIwOjAJBgUrDgMCGgUABBSFzP+3ISq4sO+Kv/vflNCGU6KWHQQUvfQ1"
    "cBdS8cCasIQvqqzdxWD2dOwCAQGAABgPMjAyNjExMjEwNzQwNDdaoBEYDzIwMjYxMTIxMDg0MDQ3WjB4MDowCQYFKw4D"
    "AhoFAAQUhcz/tyEquLDvir/735TQhlOilh0EFL30NXAXUvHAmrCEL6qs3cVg9nTsAgECoRYYDzIwMjQwMjAxMDcwMDAw"
    "WqADCgEBGA8yMDI2MTEyMTA3NDA0N1qgERgPMjAyNjExMjEwODQwNDdaMGIwOjAJBgUrDgMCGgUABBSFzP+3ISq4sO+K"
    "v/vflNCGU6KWHQQUvfQ1cBdS8cCasIQvqqzdxWD2dOwCAQOCABgPMjAyNjExMjEwNzQwNDdaoBEYDzIwMjYxMTIxMDg0"
    "MDQ3WqEjMCEwHwYJKwYBBQUHMAECBBIEEKQVpEktFv4+2/4BdgxNHkMwCgYIKoZIzj0EAwIDSAAwRQIgZeKyRpPVlj3/"
    "Fn2Wa8uySVNfEfx4QGWENCfdpVBEQwMCIQC5B3gPLove9YKvVl8XHI/3/Et4FFCp6ACW6BKSIOvPRw==";

constexpr const char* kRequest =
    "MIHlMIHiMIG6MDwwOjAJBgUrDgMCGgUABBSFzP+3ISq4sO+Kv/vflNCGU6KWHQQUvfQ1cBdS8cCasIQvqqzdxWD2dOwC"
    "AQEwPDA6MAkGBSsOAwIaBQAEFIXM/7chKriw74q/+9+U0IZTopYdBBS99DVwF1LxwJqwhC+qrN3FYPZ07AIBAjA8MDow"
    "CQYFKw4DAhoFAAQUhcz/tyEquLDvir/735TQhlOilh0EFL30NXAXUvHAmrCEL6qs3cVg9nTsAgEDoiMwITAfBgkrBgEF"
    "BQcwAQIEEgQQpBWkSS0W/j7b/gF2DE0eQw==";

constexpr std::int64_t kProduced = 1795246847;
constexpr std::int64_t kNext = 1795250447;
constexpr std::int64_t kRevoked = 1706770800;

Octets Decode(const std::string& base64) {
    Octets octets(base64.size());
    unsigned length = 0;
    base64_decode(base64.data(), static_cast<unsigned>(base64.size()), octets.data(), length);
    octets.resize(length);
    return octets;
}

std::wstring At(std::int64_t seconds) {
    return ca::TimeLine(ca::DescribeTime(seconds));
}

std::wstring Say(Octets response) {
    ca::CTextLines lines;
    ca::SayOcspResponse(response, lines);
    return lines.Take();
}

using OcspTextTest = EnglishTest;

TEST_F(OcspTextTest, SaysWhatTheResponderSaysOfEachCertificate) {
    const std::wstring times =
        L"\n    This update: " + At(kProduced) + L"\n    Next update: " + At(kNext);
    const std::wstring expected =
        L"C=RU, CN=Authority, " + At(kProduced) + L"\n  Serial: 01\n    Status: Not revoked" +
        times + L"\n  Serial: 02\n    Status: Revoked, " + At(kRevoked) + L", Key compromise" +
        times + L"\n  Serial: 03\n    Status: Not known to the responder" + times +
        L"\n  OCSP nonce:\n    a415a4492d16fe3edbfe01760c4d1e43";
    Octets whole = Decode(kResponse);
    EXPECT_EQ(expected, Say(whole));
    const ca::CDecoded<CAsn1OcspResponse> response(whole);
    EXPECT_EQ(expected, Say(OctetStringOf(response->ResponseBytes()->Response())));
}

TEST_F(OcspTextTest, SaysWhyThereIsNoAnswer) {
    EXPECT_EQ(L"Status: 6", Say({0x30, 0x03, 0x0A, 0x01, 0x06}));
}

TEST_F(OcspTextTest, RefusesWhatIsNoResponse) {
    Octets octets = Decode(kResponse);
    for (std::size_t length = 0; length < octets.size(); length += 7) {
        Octets cut(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(0U, ErrorOf([&] { Say(cut); })) << length;
    }
}

TEST_F(OcspTextTest, RequestsListWhatTheyAskAbout) {
    Octets octets = Decode(kRequest);
    const ca::CDecoded<CAsn1OcspRequest> request(octets);
    const CAsn1TbsOcspRequest& tbs = *request->TbsRequest();
    ASSERT_EQ(3U, tbs.RequestList()->Count());
    auto at = tbs.RequestList()->Elements();
    ASSERT_TRUE(at.Next());
    EXPECT_EQ(1, IntegerOf(ca::Good(at)->ReqCert()->SerialNumber(), 0));
    EXPECT_NE(nullptr, tbs.RequestExtensions());
    EXPECT_EQ(nullptr, request->OptionalSignature());
}

}  // namespace

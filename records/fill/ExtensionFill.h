#pragma once

#include "records/AttrCertInfo.h"
#include "records/CertInfoExtension.h"
#include "records/text/ExtensionList.h"

#include <span>
#include <string>

class CAsn1AttributeView;

namespace ca {

/// Describes one Extension in its record, see DescribeExtension().
ExtensionParts FillExtension(const CAsn1ExtensionView& extension, CertInfoExtension& record,
                             std::wstring& error);

/// Appends the records of all extensions, see DescribeExtensions().
void FillExtensions(const CAsn1Extensions& list, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit = {});
/// The same for the content of Extensions.
void FillExtensions(std::span<const unsigned char> content, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit = {});

/// Appends the record of one attribute of an attribute certificate (RFC 5755, 4.4); what is wrong
/// is added to `error`. The raw data is the encoding of its values, one after the other.
void FillAttribute(const CAsn1AttributeView& attribute, CertInfoAttributeCollection& records,
                   std::wstring& error);

}  // namespace ca

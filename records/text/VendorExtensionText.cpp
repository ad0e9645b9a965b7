#include "records/text/ExtensionText.h"

namespace ca {

std::span<const ExtensionRow> VendorExtensionRows() {
    return {};
}

}  // namespace ca

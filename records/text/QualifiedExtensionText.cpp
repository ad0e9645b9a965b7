#include "records/text/ExtensionText.h"

namespace ca {

std::span<const ExtensionRow> QualifiedExtensionRows() {
    return {};
}

}  // namespace ca

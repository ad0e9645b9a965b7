#pragma once

#include "host/Request.h"

#include <string>
#include <string_view>

namespace host {

/// A line of a session, ready to be sent.
struct SessionRequest {
    CRequest request;
    std::string output;  ///< file for the octets of the result; "" for none
};

/// Where a line comes from.
struct LineSource {
    std::string_view place;        ///< what the user knows it by, visible; names the request
    bool isStandardInput = false;  ///< which then is not a payload's file
    bool interactive = false;      ///< what holds for a line that does not say
};

/// Reads a line of a session. It goes to the module octet by octet as it stands, unless it is a
/// JSON object with members that begin with "@"; those are for this program and are taken out:
///   "@mode": operation by name, "@file": path of the file data, "@form": "base64" (default) or
///   "binary", "@output": path for the octets of the result, "@interactive": true or false.
/// Throws CHostError (usage) for a directive that is wrong, and for a file that cannot be read.
SessionRequest ReadSessionLine(std::string line, const LineSource& source);

}  // namespace host

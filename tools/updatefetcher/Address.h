#pragma once

#include <string>

namespace updatefetcher {

/// Whether an update may come from there: by HTTPS, or from a server on this machine; without a name or
/// password in the address.
[[nodiscard]] bool isTrustworthy(const std::string& address);

/// Whether a server at the first address may send on to the second: nothing leads from HTTPS to less.
[[nodiscard]] bool mayLeadTo(const std::string& from, const std::string& to);

}  // namespace updatefetcher

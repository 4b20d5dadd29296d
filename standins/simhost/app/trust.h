#pragma once
#include <string>

namespace simhost {

/// Lets TLS of this user trust the certificates of a PEM file, as an administrator would for a
/// service in the house. Throws StartError when the file cannot be read or holds none.
void TrustCertificates(const std::wstring& pemFile);

} // namespace simhost

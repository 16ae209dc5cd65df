#include "host/cups/connection/certificate.hpp"

#include <array>
#include <filesystem>
#include <memory>
#include <string_view>

#include "host/cups/connection/cups_handles.hpp"
#include "host/failure.hpp"
#include "host/home_folder.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

using Certificate = std::unique_ptr<cups_array_t, EndedBy<httpFreeCredentials>>;

// Where libcups looks for the certificates that an ordinary user trusts.
fs::path certificatesFolder() { return homeFolder().string() + "/.cups/ssl"; }

fs::path fileOf(const std::string& host) { return certificateFile(certificatesFolder(), host); }

Certificate shownBy(http_t* http) {
  cups_array_t* shown = nullptr;
  httpCopyCredentials(http, &shown);
  return Certificate(shown);
}

Certificate keptFor(const std::string& host) {
  cups_array_t* kept = nullptr;
  httpLoadCredentials(certificatesFolder().c_str(), &kept, host.c_str());
  return Certificate(kept);
}

bool keep(const Certificate& certificate, const std::string& host) {
  std::error_code ignored;
  fs::create_directories(certificatesFolder(), ignored);
  fs::permissions(certificatesFolder(), fs::perms::owner_all, ignored);
  return httpSaveCredentials(certificatesFolder().c_str(), certificate.get(), host.c_str()) == 0;
}

// The server's own certificate, which comes first in the chain.
std::string_view bytesOf(const Certificate& certificate) {
  const auto* const first = static_cast<const http_credential_t*>(cupsArrayFirst(certificate.get()));
  if (first == nullptr) return {};
  return {static_cast<const char*>(first->data), first->datalen};
}

std::string lastMessage() {
  const char* const words = cupsLastErrorString();
  return words == nullptr ? "it is not valid" : words;
}

}  // namespace

fs::path certificateFile(const fs::path& folder, std::string host) {
  constexpr std::string_view kKept = "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
  std::size_t at = 0;
  while ((at = host.find_first_not_of(kKept, at)) != std::string::npos) host[at] = '_';
  return folder / (host + ".crt");
}

std::optional<std::string> checkCertificate(http_t* http, const std::string& server) {
  std::array<char, HTTP_MAX_HOST> name{};
  const std::string host = httpGetHostname(http, name.data(), static_cast<int>(name.size()));
  const auto shown = shownBy(http);
  const auto kept = keptFor(host);
  if (!kept) {
    if (std::error_code ignored; fs::exists(fileOf(host), ignored)) {
      throw Failure(Trouble::insecure,
                    Fact("the stored certificate of the print server at [server] cannot be read"_fact,
                         {{"[server]", server}}),
                    "; repair or remove " + fileOf(host).string());
    }
    if (httpCredentialsGetTrust(shown.get(), host.c_str()) != HTTP_TRUST_OK) {
      throw Failure(
          Trouble::insecure,
          Fact("the print server at [server] presents a certificate that is not trusted ([words])"_fact,
               {{"[server]", server}, {"[words]", lastMessage()}}),
          "; get the right one from its administrator and save it as " + fileOf(host).string() +
              ", or see client.conf(5)");
    }
  } else if (bytesOf(shown) == bytesOf(kept)) {
    return std::nullopt;
  } else {
    throw Failure(
        Trouble::insecure,
        Fact(
            "the print server at [server] presents a different certificate than before, so it may be another server"_fact,
            {{"[server]", server}}),
        "; if its administrator says that the certificate was replaced, remove " + fileOf(host).string() +
            " and print again");
  }
  if (keep(shown, host)) return std::nullopt;
  return "the certificate of the print server at " + server + " cannot be saved as " + fileOf(host).string() +
         ", so nobody will notice if another server takes its place";
}

}  // namespace tandemtrim::host

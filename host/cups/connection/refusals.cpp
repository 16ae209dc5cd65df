#include "host/cups/connection/refusals.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/cups/connection/login.hpp"

namespace tandemtrim::host {
namespace {

struct Meaning {
  ipp_status_t status;
  Trouble trouble;
  /// What the server does, behind its name.
  const char* fact;
  const char* remedy;
};

constexpr const char* kAskAdministrator = "; print as another user by -U, or ask the server's administrator";
constexpr const char* kChangeOptions = "; leave that option out, or give it another value by -o";
constexpr const char* kChangeDocument = "; see whether another program opens it, or save it as a PDF file";
constexpr const char* kSeeLog = "; its error log has the reason";
constexpr const char* kSeeWhatItIs = "; see whether it is a print server, or name another by -h";
constexpr const char* kTryLater = "; try again later, or choose another printer by -d";

// What each status says, whether it comes by IPP or was made of one of HTTP by libcups.
constexpr std::array kMeanings{
    Meaning{IPP_STATUS_ERROR_BAD_REQUEST, Trouble::other, "does not understand the request",
            "; leave options out that are not the printer's, and see its error log"},
    Meaning{IPP_STATUS_ERROR_FORBIDDEN, Trouble::notAllowed, "does not allow that", kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_NOT_AUTHORIZED, Trouble::notAllowed, "does not allow that", kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_NOT_POSSIBLE, Trouble::other, "cannot do that at present", kTryLater},
    Meaning{IPP_STATUS_ERROR_TIMEOUT, Trouble::noServer, "waited too long for the rest of the request",
            "; try again"},
    Meaning{IPP_STATUS_ERROR_NOT_FOUND, Trouble::noPrinter, "does not know what it was asked about",
            "; lpstat -e lists its printers, and lpstat -o its jobs"},
    Meaning{IPP_STATUS_ERROR_GONE, Trouble::noPrinter, "no longer has what it was asked about",
            "; lpstat -e lists its printers, and lpstat -o its jobs"},
    Meaning{IPP_STATUS_ERROR_REQUEST_ENTITY, Trouble::document, "takes no document of this size",
            "; print it in parts, or ask the server's administrator to allow larger ones"},
    Meaning{IPP_STATUS_ERROR_REQUEST_VALUE, Trouble::other, "takes no value of this length", kChangeOptions},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED, Trouble::format,
            "cannot print documents of this kind",
            "; choose another printer by -d, or save it as a PDF file"},
    Meaning{IPP_STATUS_ERROR_ATTRIBUTES_OR_VALUES, Trouble::other, "does not take one of the options",
            kChangeOptions},
    Meaning{IPP_STATUS_ERROR_CONFLICTING, Trouble::other, "finds options that exclude each other",
            kChangeOptions},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_FORMAT_ERROR, Trouble::document, "finds the document damaged",
            kChangeDocument},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_ACCESS, Trouble::document, "cannot read the document", kChangeDocument},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_PASSWORD, Trouble::document, "needs the document's password",
            "; save it without a password"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_PERMISSION, Trouble::document, "is not permitted to print the document",
            "; save it without that protection"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_SECURITY, Trouble::document, "does not take the document's protection",
            "; save it without that protection"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_UNPRINTABLE, Trouble::document, "cannot print the document",
            kChangeDocument},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_INFO_NEEDED, Trouble::notAllowed, "wants to know which account pays",
            kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_CLOSED, Trouble::notAllowed, "has closed the account that pays",
            kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_LIMIT_REACHED, Trouble::notAllowed,
            "has reached the limit of the account that pays", kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_AUTHORIZATION_FAILED, Trouble::notAllowed,
            "could not charge the account that pays", kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_INTERNAL, Trouble::other, "has an error of its own", kSeeLog},
    Meaning{IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED, Trouble::other, "cannot do that", kSeeWhatItIs},
    Meaning{IPP_STATUS_ERROR_SERVICE_UNAVAILABLE, Trouble::noServer, "is out of service at present",
            "; try again later, or name another server by -h"},
    Meaning{IPP_STATUS_ERROR_VERSION_NOT_SUPPORTED, Trouble::other, "does not speak this version of IPP",
            kSeeWhatItIs},
    Meaning{IPP_STATUS_ERROR_DEVICE, Trouble::stopped, "cannot reach the printer's device",
            "; see whether the printer is on, or choose another by -d"},
    Meaning{IPP_STATUS_ERROR_TEMPORARY, Trouble::other, "has an error that passes",
            "; try again in a moment"},
    Meaning{IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, Trouble::rejecting, "accepts no jobs for this printer",
            "; let it accept them again by cupsaccept, or choose another printer by -d"},
    Meaning{IPP_STATUS_ERROR_BUSY, Trouble::other, "is too busy", "; try again in a moment"},
    Meaning{IPP_STATUS_ERROR_JOB_CANCELED, Trouble::other, "has cancelled the job",
            "; ask the server's administrator why"},
    Meaning{IPP_STATUS_ERROR_MULTIPLE_JOBS_NOT_SUPPORTED, Trouble::other, "takes no job of several documents",
            "; print each file by itself"},
    Meaning{IPP_STATUS_ERROR_PRINTER_IS_DEACTIVATED, Trouble::rejecting, "has switched the printer off",
            "; have it switched on again, or choose another by -d"},
    Meaning{IPP_STATUS_ERROR_TOO_MANY_JOBS, Trouble::rejecting, "has as many jobs as it takes",
            "; wait until some are printed (lpstat -o), or choose another printer by -d"},
    Meaning{IPP_STATUS_ERROR_TOO_MANY_DOCUMENTS, Trouble::other, "takes fewer documents in a job",
            "; print them in several jobs"},
};

constexpr Meaning kUnknown{IPP_STATUS_ERROR_INTERNAL, Trouble::other, "refuses the request", kSeeLog};

// What a status of HTTP says in those of IPP, which has more of them.
struct HttpMeaning {
  http_status_t http;
  ipp_status_t ipp;
};

constexpr std::array kHttpMeanings{
    HttpMeaning{HTTP_STATUS_BAD_REQUEST, IPP_STATUS_ERROR_BAD_REQUEST},
    HttpMeaning{HTTP_STATUS_UNAUTHORIZED, IPP_STATUS_ERROR_NOT_AUTHENTICATED},
    HttpMeaning{HTTP_STATUS_CUPS_AUTHORIZATION_CANCELED, IPP_STATUS_ERROR_NOT_AUTHENTICATED},
    HttpMeaning{HTTP_STATUS_FORBIDDEN, IPP_STATUS_ERROR_FORBIDDEN},
    HttpMeaning{HTTP_STATUS_NOT_FOUND, IPP_STATUS_ERROR_NOT_FOUND},
    HttpMeaning{HTTP_STATUS_GONE, IPP_STATUS_ERROR_GONE},
    HttpMeaning{HTTP_STATUS_REQUEST_TIMEOUT, IPP_STATUS_ERROR_TIMEOUT},
    HttpMeaning{HTTP_STATUS_REQUEST_TOO_LARGE, IPP_STATUS_ERROR_REQUEST_ENTITY},
    HttpMeaning{HTTP_STATUS_SERVER_ERROR, IPP_STATUS_ERROR_INTERNAL},
    HttpMeaning{HTTP_STATUS_BAD_GATEWAY, IPP_STATUS_ERROR_SERVICE_UNAVAILABLE},
    HttpMeaning{HTTP_STATUS_SERVICE_UNAVAILABLE, IPP_STATUS_ERROR_SERVICE_UNAVAILABLE},
    HttpMeaning{HTTP_STATUS_GATEWAY_TIMEOUT, IPP_STATUS_ERROR_SERVICE_UNAVAILABLE},
};

bool isByHttp(http_t* http) { return httpGetStatus(http) >= HTTP_STATUS_BAD_REQUEST; }

ipp_status_t statusOf(http_t* http) {
  if (!isByHttp(http)) return cupsLastError();
  const auto* const meaning = std::ranges::find(kHttpMeanings, httpGetStatus(http), &HttpMeaning::http);
  return meaning == kHttpMeanings.end() ? IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED : meaning->ipp;
}

// The server's own words on its status, or the protocol's where neither it nor we have any; may be empty.
std::string wordsOf(http_t* http, ipp_status_t status, bool isKnown) {
  if (isByHttp(http)) return "HTTP status " + std::to_string(static_cast<int>(httpGetStatus(http)));
  const std::string keyword = ippErrorString(status);
  const char* const words = cupsLastErrorString();
  if (words != nullptr && words != keyword) return words;
  return isKnown ? "" : keyword;
}

Failure unauthorized(const std::string& server) {
  const std::string user = cupsUser();
  const std::string others = ", print as another user by -U, or ask the server's administrator";
  return isLoginGiven()
             ? Failure(
                   Trouble::unauthorized,
                   Fact(
                       "Unauthorized: the print server at [server] does not take that password for [user]"_fact,
                       {{"[server]", server}, {"[user]", user}}),
                   "; try again with another" + others)
             : Failure(
                   Trouble::unauthorized,
                   Fact(
                       "Unauthorized: the print server at [server] wants the password of [user] and got none"_fact,
                       {{"[server]", server}, {"[user]", user}}),
                   "; type it at a terminal" + others);
}

}  // namespace

Failure refusal(http_t* http, const std::string& server) {
  const auto status = statusOf(http);
  if (status == IPP_STATUS_ERROR_NOT_AUTHENTICATED) return unauthorized(server);
  const auto* const known = std::ranges::find(kMeanings, status, &Meaning::status);
  const bool isKnown = known != kMeanings.end();
  const auto& meaning = isKnown ? *known : kUnknown;
  const auto words = wordsOf(http, status, isKnown);
  auto english =
      "the print server at " + server + ' ' + meaning.fact + (words.empty() ? "" : " (" + words + ")");
  // In other languages the trouble says what it means.
  Fact fact(std::move(english), kRefusal,
            {{"[server]", server}, {"[words]", words.empty() ? ippErrorString(status) : words}});
  return Failure(meaning.trouble, std::move(fact), meaning.remedy);
}

}  // namespace tandemtrim::host

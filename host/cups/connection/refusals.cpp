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
  FactText fact;
  const char* remedy;
};

constexpr const char* kAskAdministrator =
    "; print as another user with -U, or ask the server's administrator";
constexpr const char* kChangeOptions = "; leave that option out, or give it another value with -o";
constexpr const char* kChangeDocument = "; see whether another program opens it, or save it as a PDF file";
constexpr const char* kSeeLog = "; the server's error log has the reason";
constexpr const char* kSeeWhatItIs = "; see whether it is a print server, or name another with -h";
constexpr const char* kTryLater = "; try again later, or choose another printer with -d";

// The meaning of each IPP status. An HTTP status is first converted by kHttpMeanings.
constexpr std::array kMeanings{
    Meaning{IPP_STATUS_ERROR_BAD_REQUEST, Trouble::other,
            "the print server at [server] does not understand the request"_fact,
            "; leave out options that are not the printer's, and see the server's error log"},
    Meaning{IPP_STATUS_ERROR_FORBIDDEN, Trouble::notAllowed,
            "the print server at [server] does not allow that"_fact, kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_NOT_AUTHORIZED, Trouble::notAllowed,
            "the print server at [server] does not allow that"_fact, kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_NOT_POSSIBLE, Trouble::other,
            "the print server at [server] cannot do that at present"_fact, kTryLater},
    Meaning{IPP_STATUS_ERROR_TIMEOUT, Trouble::noServer,
            "the print server at [server] waited too long for the rest of the request"_fact, "; try again"},
    Meaning{IPP_STATUS_ERROR_NOT_FOUND, Trouble::noPrinter,
            "the print server at [server] does not have what was requested"_fact,
            "; lpstat -e lists its printers, and lpstat -o its jobs"},
    Meaning{IPP_STATUS_ERROR_GONE, Trouble::noPrinter,
            "the print server at [server] no longer has what was requested"_fact,
            "; lpstat -e lists its printers, and lpstat -o its jobs"},
    Meaning{IPP_STATUS_ERROR_REQUEST_ENTITY, Trouble::document,
            "the print server at [server] does not accept a document of this size"_fact,
            "; print it in parts, or ask the server's administrator to allow larger ones"},
    Meaning{IPP_STATUS_ERROR_REQUEST_VALUE, Trouble::other,
            "the print server at [server] does not accept a value of this length"_fact, kChangeOptions},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED, Trouble::format,
            "the print server at [server] cannot print documents of this kind"_fact,
            "; choose another printer with -d, or save it as a PDF file"},
    Meaning{IPP_STATUS_ERROR_ATTRIBUTES_OR_VALUES, Trouble::other,
            "the print server at [server] does not accept one of the options"_fact, kChangeOptions},
    Meaning{IPP_STATUS_ERROR_CONFLICTING, Trouble::other,
            "the print server at [server] reports options that cannot be combined"_fact, kChangeOptions},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_FORMAT_ERROR, Trouble::document,
            "the print server at [server] reports that the document is damaged"_fact, kChangeDocument},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_ACCESS, Trouble::document,
            "the print server at [server] cannot read the document"_fact, kChangeDocument},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_PASSWORD, Trouble::document,
            "the print server at [server] needs the document's password"_fact,
            "; save it without a password"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_PERMISSION, Trouble::document,
            "the print server at [server] is not permitted to print the document"_fact,
            "; save it without that protection"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_SECURITY, Trouble::document,
            "the print server at [server] does not support the document's protection"_fact,
            "; save it without that protection"},
    Meaning{IPP_STATUS_ERROR_DOCUMENT_UNPRINTABLE, Trouble::document,
            "the print server at [server] cannot print the document"_fact, kChangeDocument},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_INFO_NEEDED, Trouble::notAllowed,
            "the print server at [server] needs to know which account to charge"_fact, kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_CLOSED, Trouble::notAllowed,
            "the print server at [server] has closed the account to charge"_fact, kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_LIMIT_REACHED, Trouble::notAllowed,
            "the print server at [server] has reached the limit of the account to charge"_fact,
            kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_ACCOUNT_AUTHORIZATION_FAILED, Trouble::notAllowed,
            "the print server at [server] could not charge the account"_fact, kAskAdministrator},
    Meaning{IPP_STATUS_ERROR_INTERNAL, Trouble::other,
            "the print server at [server] has an internal error"_fact, kSeeLog},
    Meaning{IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED, Trouble::other,
            "the print server at [server] cannot do that"_fact, kSeeWhatItIs},
    Meaning{IPP_STATUS_ERROR_SERVICE_UNAVAILABLE, Trouble::noServer,
            "the print server at [server] is out of service at present"_fact,
            "; try again later, or name another server with -h"},
    Meaning{IPP_STATUS_ERROR_VERSION_NOT_SUPPORTED, Trouble::other,
            "the print server at [server] does not support this version of IPP"_fact, kSeeWhatItIs},
    Meaning{IPP_STATUS_ERROR_DEVICE, Trouble::stopped,
            "the print server at [server] cannot reach the printer's device"_fact,
            "; see whether the printer is on, or choose another with -d"},
    Meaning{IPP_STATUS_ERROR_TEMPORARY, Trouble::other,
            "the print server at [server] has a temporary error"_fact, "; try again in a moment"},
    Meaning{IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, Trouble::rejecting,
            "the print server at [server] accepts no jobs for this printer"_fact,
            "; let it accept them again with cupsaccept, or choose another printer with -d"},
    Meaning{IPP_STATUS_ERROR_BUSY, Trouble::other, "the print server at [server] is too busy"_fact,
            "; try again in a moment"},
    Meaning{IPP_STATUS_ERROR_JOB_CANCELED, Trouble::other,
            "the print server at [server] has cancelled the job"_fact,
            "; ask the server's administrator why"},
    Meaning{IPP_STATUS_ERROR_MULTIPLE_JOBS_NOT_SUPPORTED, Trouble::other,
            "the print server at [server] does not accept a job with several documents"_fact,
            "; print each file separately"},
    Meaning{IPP_STATUS_ERROR_PRINTER_IS_DEACTIVATED, Trouble::rejecting,
            "the print server at [server] has deactivated the printer"_fact,
            "; have it activated again, or choose another with -d"},
    Meaning{IPP_STATUS_ERROR_TOO_MANY_JOBS, Trouble::rejecting,
            "the print server at [server] accepts no more jobs at present"_fact,
            "; wait until some are printed (lpstat -o), or choose another printer with -d"},
    Meaning{IPP_STATUS_ERROR_TOO_MANY_DOCUMENTS, Trouble::other,
            "the print server at [server] does not accept so many documents in a job"_fact,
            "; print them in several jobs"},
};

// An HTTP status and the IPP status with the same meaning.
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

// The HTTP status, the server's own message, or the protocol's keyword for an unknown status; may be empty.
std::string wordsOf(http_t* http, ipp_status_t status, bool isKnown) {
  if (isByHttp(http)) return "HTTP status " + std::to_string(static_cast<int>(httpGetStatus(http)));
  const std::string keyword = ippErrorString(status);
  const char* const words = cupsLastErrorString();
  if (words != nullptr && words != keyword) return words;
  return isKnown ? "" : keyword;
}

Failure unauthorized(const std::string& server) {
  const std::string user = cupsUser();
  const std::string others = ", print as another user with -U, or ask the server's administrator";
  return isLoginGiven()
             ? Failure(
                   Trouble::unauthorized,
                   Fact(
                       "Unauthorized: the print server at [server] does not accept that password for [user]"_fact,
                       {{"[server]", server}, {"[user]", user}}),
                   "; try again with another" + others)
             : Failure(
                   Trouble::unauthorized,
                   Fact(
                       "Unauthorized: the print server at [server] requires the password of [user] and received none"_fact,
                       {{"[server]", server}, {"[user]", user}}),
                   "; type it at a terminal" + others);
}

}  // namespace

Failure refusal(http_t* http, const std::string& server) {
  const auto status = statusOf(http);
  if (status == IPP_STATUS_ERROR_NOT_AUTHENTICATED) return unauthorized(server);
  const auto* const meaning = std::ranges::find(kMeanings, status, &Meaning::status);
  const bool isKnown = meaning != kMeanings.end();
  const auto words = wordsOf(http, status, isKnown);
  if (!isKnown)
    return Failure(Trouble::other, Fact(kRefusal, {{"[server]", server}, {"[words]", words}}), kSeeLog);
  return Failure(meaning->trouble, withWords(Fact(meaning->fact, {{"[server]", server}}), words),
                 meaning->remedy);
}

}  // namespace tandemtrim::host

#include "host/cli/run.hpp"

#include <algorithm>

#include "host/applications/applications.hpp"
#include "host/cli/dialog_loader.hpp"
#include "host/cli/interruption.hpp"
#include "host/cli/presets.hpp"
#include "host/cli/printer_list.hpp"
#include "host/cli/progress_line.hpp"
#include "host/cli/results.hpp"
#include "host/cups/connection/connection.hpp"
#include "host/cups/option_values.hpp"
#include "host/cups/ppd.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/cups/sent_job.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/panel/job_settings.hpp"
#include "host/plain_text.hpp"
#include "host/presets/preset_folders.hpp"

namespace tandemtrim::host {
namespace {

// The print server and its printer; absent when the PPD comes from a file, and nothing is printed or saved as
// defaults.
struct Target {
  Connection connection;
  Printer printer;
};

std::optional<Target> findTarget(const CommandLine& line, const Report& report) {
  const bool printing = !line.files.empty();
  if (line.ppd && !printing && !line.saveAsDefault) return std::nullopt;
  Connection connection(line.server);
  auto printer = findPrinter(connection, line.printer);
  if (printing) checkState(printer, report);
  return Target{std::move(connection), std::move(printer)};
}

// The options that the job starts with: the user's saved ones, overridden by the preset's, then by the
// command line's.
Options startingOptions(const CommandLine& line, const std::optional<Target>& target, ppd_file_t* ppd,
                        const std::optional<Preset>& preset) {
  Options options;
  if (target) options = target->printer.saved;
  if (preset) {
    for (const auto& some : {preset->options, preset->panel}) {
      for (const auto& option : some) setOption(options, option);
    }
  }
  for (const auto& option : asSpelled(ppd, line.options)) setOption(options, option);
  return options;
}

// The settings as they are sent; Failure for a value that would be lost. Called before anything goes to the
// server, so that a mistake costs no paper.
JobSettings withoutLosses(const CommandLine& line, JobSettings settings) {
  refuseLossyValues(settings.options);
  settings.options = encodable(std::move(settings.options));
  if (line.title) refuseLossyTitle(*line.title);
  return settings;
}

SentJob print(const CommandLine& line, const Target& target, std::vector<Document>& documents,
              const Options& options) {
  const auto title = line.title.value_or(documents.front().name());
  const Interruption interruption;
  ProgressLine progress;
  const auto onProgress = [&](auto /*job*/, const auto& name, auto sent, auto size) {
    Interruption::check();
    progress.show(name, sent, size);
  };
  try {
    auto job = sendAndConfirm(target.connection, target.printer, title, options, documents, onProgress);
    if (job.failure) job.failure = Interruption::causeOf(*job.failure);
    return job;
  } catch (const Failure& failure) {
    throw Interruption::causeOf(failure);
  }
}

// lp's own message about a job that the server has, for scripts that look for its number.
void showRequest(const CommandLine& line, std::ostream& out, const SentJob& job) {
  if (line.silent || line.json || !isAtServer(job)) return;
  const auto files = std::ranges::count_if(line.files, [](const auto& file) { return file != "-"; });
  out << "request id is " << plainText(job.printer) << '-' << job.number << " (" << files << " file(s))"
      << std::endl;
}

void showConfirmation(const CommandLine& line, std::ostream& out, const SentJob& job) {
  if (!line.silent && !job.failure) out << plainText(jobText(job)) << '\n';
}

void show(const CommandLine& line, std::ostream& out, const std::optional<std::string>& printer,
          const JobSettings& settings, const std::optional<SentJob>& job) {
  if (line.json) {
    showJson(out, printer, settings, job);
    return;
  }
  if (job) showConfirmation(line, out, *job);
  const bool onlyLooking = !job && !line.saveAsDefault && !line.savePreset;
  if (line.summary || onlyLooking) showSummary(out, settings);
  if (!line.summary && onlyLooking) showOptions(out, settings.options);
}

std::string countText(const Options& options) {
  return std::to_string(options.size()) + (options.size() == 1 ? " option" : " options");
}

Options toKeep(const JobSettings& settings) {
  const auto& panel = settings.panel;
  return keepable(panel ? withoutKeywords(settings.options, panel->illegalDefaults) : settings.options);
}

void keep(const Target& target, const Options& options, const Report& report) {
  saveAsDefault(target.connection, target.printer, options);
  report("saved as your defaults for " + nameWithInstance(target.printer) + ": " + countText(options));
}

void reset(const CommandLine& line, const Report& report) {
  const Connection connection(line.server);
  const auto printer = findPrinter(connection, line.printer);
  const auto name = nameWithInstance(printer);
  const auto gone = resetDefaults(printer);
  report(gone.empty() ? "you have no saved defaults for " + name
                      : "your defaults for " + name + " were removed: " + countText(gone));
}

void showSaved(const CommandLine& line, std::ostream& out, const SavedFile& saved) {
  if (!line.silent) out << "saved as " << plainText(saved.name) << " (" << saved.bytes << " bytes)\n";
}

void runDialog(const CommandLine& line, std::ostream& out, const Report& report) {
  const auto printed = showDialog(line, report);
  if (const auto* const saved = std::get_if<SavedFile>(&printed)) return showSaved(line, out, *saved);
  const auto* const job = std::get_if<SentJob>(&printed);
  if (job == nullptr) return report("cancelled");
  showRequest(line, out, *job);
  if (job->failure) throw Failure(*job->failure);
  showConfirmation(line, out, *job);
}

bool usesPresets(const CommandLine& line) {
  return line.listPresets || line.preset || line.savePreset || line.deletePreset;
}

void switchApplications(const CommandLine& line, std::ostream& out, const Report& report) {
  switch (*line.applications) {
    case Applications::on:
      return switchApplicationsOn(line.allGtk, out, report);
    case Applications::off:
      return switchApplicationsOff(out, report);
    case Applications::status:
      return showApplications(out, report);
  }
}

}  // namespace

void run(const CommandLine& line, std::ostream& out, const Report& report) {
  if (line.applications) return switchApplications(line, out, report);
  if (line.resetDefaults) return reset(line, report);
  if (line.list) return listPrinters(line, out, report);
  if (wantsDialog(line)) {
    try {
      return runDialog(line, out, report);
    } catch (const NoDialog& failure) {
      if (line.dialog) throw;
      report(failure.fact().english() + "; printing without it");
    }
  }
  auto documents = openDocuments(line.files);
  const auto target = findTarget(line, report);
  const auto ppd = line.ppd ? openPpd(*line.ppd, *line.ppd) : queuePpd(target->connection, target->printer);
  const auto printer = target ? target->printer.name : line.printer;
  const auto printersName = printer.value_or("the printer");
  const auto family = usesPresets(line) ? familyOf(line, printersName, ppd.get()) : "";
  if (line.listPresets) return listPresets(line, family, out, report);
  if (line.deletePreset) {
    deletePreset(family, *line.deletePreset, report);
    return report("the preset " + *line.deletePreset + " was deleted");
  }
  const auto preset = line.preset ? std::optional(findPreset(family, *line.preset, report)) : std::nullopt;
  const auto settings = withoutLosses(
      line, settleSettings(line, printersName, ppd.get(), target ? target->printer.queueDefaults : Options{},
                           startingOptions(line, target, ppd.get(), preset), report));
  const auto kept = line.saveAsDefault ? toKeep(settings) : Options{};

  std::optional<SentJob> job;
  if (!documents.empty()) job = print(line, *target, documents, settings.options);
  if (job) showRequest(line, out, *job);
  if (line.wait && job && !job->failure) waitForEnd(target->connection, target->printer, *job, report);
  show(line, out, printer, settings, job);
  if (target && target->connection.warning()) report(*target->connection.warning());
  if (job && job->failure) throw Failure(*job->failure);
  if (line.saveAsDefault) keep(*target, kept, report);
  if (line.savePreset) {
    savePreset(family, presetOf(line, preset, settings));
    report("saved as the preset " + *line.savePreset);
  }
}

}  // namespace tandemtrim::host

// The `laminate` command: a host of the library. It knows files by their paths only and shows or writes what the
// library holds; every command has a source of its own.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include "Command.h"
#include "Interrupt.h"
#include "OutputFile.h"
#include "Version.h"

namespace laminate::cli {

std::string Example(std::string_view sCall) { return "Example:\n  " + std::string(sCall); }

void AddOutputOption(CLI::App& app, std::string& sOutput) {
  app.add_option("-o,--output", sOutput, "File that takes the result; \"-\" is standard output")->type_name("FILE");
}

CLI::Option* AddJsonOption(CLI::App& app, bool& bJson) { return app.add_flag("--json", bJson, "Print JSON"); }

void AddBoardFile(CLI::App& app, BoardFiles& files) {
  app.add_option("BOARD.pcf", files.pcf, "The board file")->required()->type_name("");
}

void AddBoardOptions(CLI::App& app, BoardFiles& files) {
  AddBoardFile(app, files);
  app.add_option("--ftf", files.ftf, "The footprint library")->type_name("LIB.ftf");
}

namespace {

void AddSettings(CLI::App& app, Settings& settings) {
  app.add_option("--log", settings.log, "File that takes the library's log")->type_name("FILE");
  app.add_option("--work-dir", settings.workFolder, "Folder for working files; it is kept")->type_name("DIR");
  CLI::Option* pOn = app.add_flag("--progress", settings.progress, "Show a progress bar (default on a terminal)");
  app.add_flag("--no-progress", settings.noProgress, "Show no progress bar")->excludes(pOn);
}

// A stream that the caller closed must not be taken by the first file that is opened: what would go there has to fail.
void OccupyStandardStreams() {
  if (fcntl(STDIN_FILENO, F_GETFD) == -1) (void)!open("/dev/null", O_WRONLY);
  if (fcntl(STDOUT_FILENO, F_GETFD) == -1) (void)!open("/dev/null", O_RDONLY);
  if (fcntl(STDERR_FILENO, F_GETFD) == -1) (void)!open("/dev/null", O_WRONLY);
}

int Print(Console& console, const std::string& s) {
  OutputFile out(console, "-");
  out.Write(s);
  out.Commit();
  return kDone;
}

const CLI::App* Chosen(const CLI::App& app) {
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  return chosen.empty() ? &app : chosen.front();
}

int Main(Console& console, int argc, char** argv) {
  Settings settings;
  CLI::App app("Shows, checks and converts printed-circuit board designs.", "laminate");
  app.set_version_flag("--version", "laminate " LAMINATE_VERSION);
  app.require_subcommand(1);
  app.footer(Example("laminate nets board.pcf"));
  AddSettings(app, settings);
  const Command commands[] = {DeclareInfo(app),      DeclareNets(app),  DeclareComponents(app), DeclareTree(app),
                              DeclareCheck(app),     DeclareDump(app),  DeclareWhere(app),      DeclareSave(app),
                              DeclareEdit(app),      DeclarePlace(app), DeclareRender(app),     DeclareExport(app),
                              DeclareDesignData(app)};
  for (const Command& command : commands) AddSettings(*command.app, settings);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return Print(console, app.help());
  } catch (const CLI::CallForVersion& e) {
    return Print(console, std::string(e.what()) + "\n");
  } catch (const CLI::ParseError& e) {
    const CLI::App* pApp = Chosen(app);
    const std::string sName = pApp == &app ? "laminate" : "laminate " + pApp->get_name();
    console.Error({sName}, std::string(e.what()) + " (see " + sName + " --help)");
    return kUsage;
  }
  for (const Command& command : commands) {
    if (command.app->parsed()) return command.run(console, settings);
  }
  return kUsage;
}

}  // namespace

}  // namespace laminate::cli

int main(int argc, char** argv) {
  using namespace laminate::cli;
  OccupyStandardStreams();
  std::signal(SIGPIPE, SIG_IGN);
  InterruptGuard::Install();
  Console console;
  try {
    return Main(console, argc, argv);
  } catch (const Failure& failure) {
    return failure.status;
  } catch (const std::bad_alloc&) {
    console.Error({"laminate"}, "out of memory");
  } catch (const std::exception& e) {
    console.Error({"laminate"}, e.what());
  }
  return kFailed;
}

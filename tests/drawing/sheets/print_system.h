#pragma once

#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "base/paths.h"
#include "paper/sheet_choice.h"
#include "testing/temporary_folder.h"

namespace norvelis {

/// A print system of the test's own, in its own folder, reached through CUPS_SERVER as long as this lives.
/// Printers: "own", the default, keeps each job as a PDF file; "stopping" runs out of paper; "closed" takes
/// no jobs.
class PrintSystem {
  public:
    PrintSystem() {
        for (const char* name :
             {"etc/ppd", "etc/ssl", "spool/tmp", "cache", "state", "log", "out", "lib/backend"})
            std::filesystem::create_directories(At(name));
        std::filesystem::permissions(At("out"), std::filesystem::perms::all);
        for (const char* name : {"filter", "daemon", "cgi-bin", "notifier", "driver", "monitor"})
            std::filesystem::create_directory_symlink(std::string("/usr/lib/cups/") + name,
                                                      At(std::string("lib/") + name));
        WriteFile(At("lib/backend/own"), Backend());
        std::filesystem::permissions(At("lib/backend/own"), std::filesystem::perms(0755));
        WriteFile(At("etc/cups-files.conf"), Files());
        WriteFile(At("etc/cupsd.conf"), Daemon());
        WriteFile(At("test.ppd"), PrinterDescription());
        setenv("CUPS_SERVER", At("sock").c_str(), 1);
        Start();
        AddPrinter("own", "own:/own", "");
        AddPrinter("stopping", "own:/stopping", "-o printer-error-policy=stop-printer");
        AddPrinter("closed", "own:/own", "");
        Run("lpadmin -d own");
        Run("cupsreject -r 'being repaired' closed");
    }
    ~PrintSystem() {
        if (daemon_ > 0) {
            kill(daemon_, SIGTERM);
            waitpid(daemon_, nullptr, 0);
        }
        unsetenv("CUPS_SERVER");
    }
    PrintSystem(const PrintSystem&) = delete;
    PrintSystem& operator=(const PrintSystem&) = delete;

    bool Runs() const { return std::filesystem::exists(At("sock")); }
    /// What the printer "own" got as its job of this number, from 1.
    std::string JobFile(int job) const { return At("out/job-" + std::to_string(job) + ".pdf"); }

  private:
    std::string At(const std::string& name) const { return folder_.Path(name); }
    static void Run(const std::string& command) {
        const int ignored = std::system((command + " >/dev/null 2>&1").c_str());
        static_cast<void>(ignored);
    }
    void AddPrinter(const std::string& name, const std::string& device, const std::string& options) const {
        Run("lpadmin -p " + name + " -E -v " + device + " -P " + At("test.ppd") + " " + options);
    }

    void Start() {
        const std::string daemon = At("etc/cupsd.conf"), files = At("etc/cups-files.conf");
        daemon_ = fork();
        if (daemon_ == 0) {
            execl("/usr/sbin/cupsd", "cupsd", "-f", "-c", daemon.c_str(), "-s", files.c_str(), nullptr);
            _exit(1);
        }
        for (int i = 0; i < 200 && !Runs(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    std::string Backend() const {
        return "#!/bin/sh\n"
               "[ $# -eq 0 ] && { echo 'direct own:/ \"own\" \"own\"'; exit 0; }\n"
               "case $DEVICE_URI in *stopping*) echo 'ERROR: out of paper' >&2; exit 4;; esac\n"
               "cat \"${6:--}\" >" +
               At("out/job-$1.part") + " && mv " + At("out/job-$1.part") + " " + At("out/job-$1.pdf") + "\n";
    }
    std::string Files() const {
        std::string text = "DataDir /usr/share/cups\nSandboxing relaxed\n";
        for (const auto& [key, place] : {std::pair{"ServerRoot", "etc"},
                                         {"RequestRoot", "spool"},
                                         {"TempDir", "spool/tmp"},
                                         {"CacheDir", "cache"},
                                         {"StateDir", "state"},
                                         {"AccessLog", "log/access"},
                                         {"ErrorLog", "log/error"},
                                         {"PageLog", "log/page"},
                                         {"ServerKeychain", "etc/ssl"},
                                         {"ServerBin", "lib"}})
            text += std::string(key) + " " + At(place) + "\n";
        if (geteuid() == 0) return text + "User nobody\nGroup nogroup\nSystemGroup root\n";
        const std::string group = getgrgid(getegid())->gr_name;
        return text + "User " + getpwuid(geteuid())->pw_name + "\nGroup " + group + "\nSystemGroup " + group +
               "\n";
    }
    std::string Daemon() const {
        return "Listen " + At("sock") +
               "\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n"
               "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
               "<Policy default>\n  <Limit All>\n    Order allow,deny\n    Allow all\n  "
               "</Limit>\n</Policy>\n";
    }
    /// A printer of all papers that takes PDF as it is.
    static std::string PrinterDescription() {
        std::string text =
            "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
            "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"TEST.PPD\"\n"
            "*Product: \"(Test)\"\n*PSVersion: \"(3010.000) 0\"\n*Manufacturer: \"Test\"\n"
            "*ModelName: \"Test\"\n*ShortNickName: \"Test\"\n*NickName: \"Test\"\n*LanguageLevel: \"3\"\n"
            "*ColorDevice: True\n*DefaultColorSpace: RGB\n"
            "*cupsFilter2: \"application/vnd.cups-pdf application/pdf 0 -\"\n";
        std::string page, region, imageable, dimension;
        for (const auto& paper : paper::Papers()) {
            const auto points = [](double millimetres) { return std::to_string(millimetres / 25.4 * 72); };
            const std::string size = points(paper.width) + " " + points(paper.height);
            const std::string code = paper.name + ": \"<</PageSize[" + size + "]>>setpagedevice\"\n";
            page += "*PageSize " + code;
            region += "*PageRegion " + code;
            imageable += "*ImageableArea " + paper.name + ": \"0 0 " + size + "\"\n";
            dimension += "*PaperDimension " + paper.name + ": \"" + size + "\"\n";
        }
        for (const auto& [name, codes] : {std::pair{"PageSize", page}, {"PageRegion", region}})
            text += std::string("*OpenUI *") + name + ": PickOne\n*OrderDependency: 10 AnySetup *" + name +
                    "\n*Default" + name + ": A4\n" + codes + "*CloseUI: *" + name + "\n";
        return text + "*DefaultImageableArea: A4\n" + imageable + "*DefaultPaperDimension: A4\n" + dimension;
    }

    TemporaryFolder folder_;
    pid_t daemon_ = -1;
};

}  // namespace norvelis

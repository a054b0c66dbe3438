#include "commands.h"

#include <sigildesk/crypto.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <stdexcept>

namespace {

/** The folder that is installed beside the library, wherever that is; in the build tree too. */
std::string folderBesideTheLibrary()
{
    Dl_info library{};
    dladdr(reinterpret_cast<void*>(&HV_Initalize), &library);
    return (std::filesystem::canonical(library.dli_fname).parent_path() / "sigildesk").string();
}

int run(int argc, char** argv)
{
    CLI::App app{"Pick a Korean PKI certificate, unlock its key, sign with it."};
    app.set_version_flag("--version", "sigildesk " SIGILDESK_VERSION);
    app.require_subcommand(1);

    host::Setting setting;
    setting.folder = folderBesideTheLibrary();
    app.add_option("--folder", setting.folder, "Library folder with toolkits, settings and language files")
        ->check(CLI::ExistingDirectory)
        ->capture_default_str();
    app.add_option("--language", setting.language, "Language of dialogs and names: ko or en")
        ->transform(CLI::CheckedTransformer(std::map<std::string, int>{{"ko", 1}, {"en", 2}}));

    int result = host::done;

    std::string text, signature, certificate;
    auto* select = app.add_subcommand("select", "Open the selection dialog and print what was chosen");
    select->add_option("--certificate", certificate, "Write the chosen certificate (DER) to this file");
    auto* sign = select->add_option("--sign", text, "Sign this file with the chosen key (SHA-256)")
                     ->check(CLI::ExistingFile);
    select->add_option("--signature", signature, "Write the signature to this file")->needs(sign);
    sign->needs("--signature");
    select->callback([&] { result = host::selectCertificate(setting, text, signature, certificate); });

    int types = 15;
    auto* list = app.add_subcommand("list", "Print the certificates in your home folder");
    list->add_option("--types", types, "Sum of the families: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI")
        ->check(CLI::Range(1, 15))
        ->capture_default_str();
    list->callback([&] { result = host::listCertificates(setting, types); });

    int toolkit = 0;
    std::string file;
    auto* show = app.add_subcommand("show", "Print the fields of a certificate file (DER)");
    show->add_option("file", file, "Certificate")->required()->check(CLI::ExistingFile);
    show->add_option("--toolkit", toolkit, "0 maker toolkit, 1 government API")->check(CLI::Range(0, 1));
    show->callback([&] { result = host::showCertificate(setting, toolkit, file); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& answer) {
        return app.exit(answer) == 0 ? host::done : host::wrongUse;
    }
    return result;
}

/** Everything that was printed has reached standard output. A full disk shows itself here. */
void finishOutput()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0 || !std::cout.flush())
        throw std::runtime_error("cannot write to standard output");
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const int result = run(argc, argv);
        finishOutput();
        return result;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return host::failed;
    }
}

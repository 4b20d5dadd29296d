#include "simhost/app/options.h"

#include <cwchar>
#include <functional>
#include <map>

namespace simhost {

const std::wstring_view usageText = LR"(usage: simhost [options]

Opens a scene in the stand-in host, loads a utility plug-in and opens its panel.

  --scene FILE            scene file; without it an empty scene that was never saved
  --plugin FILE           plug-in library; without it brimwave.dlu beside this program
  --settings-dir DIR      the host's folder for plug-in settings
  --trust-ca FILE.pem     trust this certificate authority for TLS

Orders, carried out through the panel's window:
  --token TEXT            type the API token
  --folder DIR            type the Exchange Folder
  --target A|B            choose the conversion path
  --bake yes|no           check Bake Geometry, and answer its question so
  --export                press Export & Send and wait until it has ended
  --panel-picture FILE    save a picture of the panel as PNG
  --summary FILE          write what the panel showed as JSON
  --timeout SECONDS       give up after this time (300)

The exit status of --export is 0 only when the panel's status begins with "Done".)";

namespace {

using Setter = std::function<void(Options&, const std::wstring&)>;

bool OneOf(const std::wstring& option, const std::wstring& value, std::wstring_view yes,
           std::wstring_view no) {
    if (value != yes && value != no)
        throw StartError(option + L" takes " + std::wstring(yes) + L" or " + std::wstring(no) +
                         L", not \"" + value + L"\"");
    return value == yes;
}

double Seconds(const std::wstring& value) {
    wchar_t* end = nullptr;
    const double seconds = std::wcstod(value.c_str(), &end);
    if (value.empty() || *end || !(seconds > 0))
        throw StartError(L"--timeout takes a number of seconds, not \"" + value + L"\"");
    return seconds;
}

const std::map<std::wstring, Setter, std::less<>>& ValueOptions() {
    static const std::map<std::wstring, Setter, std::less<>> table = {
        {L"--scene", [](Options& o, const std::wstring& v) { o.scene = v; }},
        {L"--plugin", [](Options& o, const std::wstring& v) { o.plugin = v; }},
        {L"--settings-dir", [](Options& o, const std::wstring& v) { o.settingsFolder = v; }},
        {L"--trust-ca", [](Options& o, const std::wstring& v) { o.trustedCa = v; }},
        {L"--token", [](Options& o, const std::wstring& v) { o.token = v; }},
        {L"--folder", [](Options& o, const std::wstring& v) { o.folder = v; }},
        {L"--target",
         [](Options& o, const std::wstring& v) {
             o.olderTarget = OneOf(L"--target", v, L"A", L"B");
         }},
        {L"--bake",
         [](Options& o, const std::wstring& v) { o.bake = OneOf(L"--bake", v, L"yes", L"no"); }},
        {L"--panel-picture", [](Options& o, const std::wstring& v) { o.panelPicture = v; }},
        {L"--summary", [](Options& o, const std::wstring& v) { o.summary = v; }},
        {L"--timeout", [](Options& o, const std::wstring& v) { o.timeoutSeconds = Seconds(v); }},
    };
    return table;
}

} // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring& name = arguments[i];
        if (name == L"--help" || name == L"-h") {
            options.help = true;
        } else if (name == L"--export") {
            options.exportAndSend = true;
        } else if (const auto found = ValueOptions().find(name); found == ValueOptions().end()) {
            throw StartError(L"unknown option \"" + name + L"\" (--help lists them)");
        } else if (i + 1 == arguments.size()) {
            throw StartError(name + L" needs a value");
        } else {
            found->second(options, arguments[++i]);
        }
    }
    return options;
}

} // namespace simhost

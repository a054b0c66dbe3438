// The table of commands and options. A new command is a row here, its function in commands.h, and a file.
#include "commands.h"
#include "options.h"

#include <utility>

namespace host {

namespace {

using Options = std::vector<Option>;

/** Which certificates: every command that lists or looks up. */
const Options selecting = {
    {"--media", "disk|DIR", Value::Folder,
        {"Where to look: the home folder, or a mounted disk or any folder that holds NPKI, GPKI ... below it",
            "찾을 곳: 홈 폴더, 또는 NPKI, GPKI 등이 들어 있는 이동식 디스크나 폴더"}},
    {"--family", "NAME,...", Value::Words,
        {"Only these families: npki, gpki, mpki, ppki", "이 계열만: npki, gpki, mpki, ppki"},
        {"npki", "gpki", "mpki", "ppki"}},
    {"--issuer", "TEXT", Value::Text,
        {"Only those whose issuer's name holds this text", "발급자 이름에 이 글이 들어 있는 인증서만"}},
    {"--policy", "OID", Value::Text, {"Only those of this policy", "이 정책의 인증서만"}},
    {"--subject", "DN", Value::Text, {"Only those of this subject", "이 주체의 인증서만"}},
    {"--serial", "HEX", Value::Text, {"Only those of this serial number", "이 일련번호의 인증서만"}},
    {"--expired", "", Value::None, {"Only those that have expired", "만료된 인증서만"}},
    {"--valid", "", Value::None, {"Only those that are valid today", "지금 유효한 인증서만"}},
    {"--expires-within", "DAYS", Value::Number,
        {"Only those that are still valid and end within so many days",
            "아직 유효하고 이 날수 안에 끝나는 인증서만"}},
};

const Argument cert{"CERT", Value::Certificate,
    {"An index of the list, a file, a folder with a pair, serial:HEX, cn:NAME, or - for standard input",
        "목록의 번호, 파일, 인증서 폴더, serial:일련번호, cn:이름, 또는 표준 입력을 뜻하는 -"}};

const Option force{"--force", "", Value::None, {"Replace what is there already", "이미 있는 파일을 바꿉니다"}};

Options joined(std::initializer_list<Options> groups)
{
    Options all;
    for (const Options& group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

} // namespace

const std::vector<Option>& globalOptions()
{
    static const Options options = {
        {"--folder", "DIR", Value::Folder,
            {"Library folder: toolkits, settings files and language files",
                "라이브러리 폴더: 툴킷, 설정 파일, 언어 파일"}},
        {"--toolkit", "maker|gpki", Value::Word,
            {"Which toolkit works (default: maker)", "사용할 툴킷 (기본: maker)"}, {"maker", "gpki"}},
        {"--language", "ko|en", Value::Word,
            {"Language of names and messages (default: by locale)", "이름과 메시지의 언어 (기본: 로캘)"},
            {"ko", "en"}},
        {"--json", "", Value::None,
            {"One JSON document on standard output, errors too", "표준 출력에 JSON 문서 하나만, 오류도 마찬가지"}},
        {"--quiet", "", Value::None, {"Results and errors, nothing else", "결과와 오류만"}},
        {"--color", "auto|always|never", Value::Word,
            {"Colours (default: auto, on a terminal)", "색 (기본: auto, 터미널에서만)"},
            {"auto", "always", "never"}},
        {"--help", "", Value::None, {"This text", "이 글"}},
        {"--version", "", Value::None, {"The version", "버전"}},
    };
    return options;
}

const std::vector<Command>& commands()
{
    static const std::vector<Command> table = {
        {"list", {"List the certificates, one line each.", "인증서를 한 줄에 하나씩 보여 줍니다."}, {},
            joined({selecting}), "sigildesk list --expires-within 30", runList},
        {"show",
            {"Show all fields of a certificate, its fingerprints and the paths of its files.",
                "인증서의 모든 항목, 지문, 파일 경로를 보여 줍니다."},
            {cert}, joined({selecting}), "sigildesk show 0", runShow},
        {"doctor",
            {"Say why certificates are listed or not, and how to mend it.",
                "인증서가 목록에 나오거나 나오지 않는 이유와 해결 방법을 알려 줍니다."},
            {{"PATH", Value::File,
                {"A file, a certificate's folder, a store or a disk (default: the medium)",
                    "파일, 인증서 폴더, 저장소 또는 디스크 (기본: 매체 전체)"},
                false, true}},
            joined({selecting}), "sigildesk doctor", runDoctor},
        {"pick",
            {"Open the selection dialog and print what was chosen. Needs a display.",
                "인증서 선택 대화 상자를 열고 고른 것을 보여 줍니다. 화면이 필요합니다."},
            {},
            {{"--sign", "FILE", Value::File,
                 {"Sign this file with the chosen key: a CMS message, FILE.p7m",
                     "고른 키로 이 파일에 서명합니다: CMS 메시지 FILE.p7m"}},
                {"--out", "DIR", Value::Folder,
                    {"Write the chosen certificates, and the message, into this folder",
                        "고른 인증서와 메시지를 이 폴더에 씁니다"}},
                force},
            "sigildesk pick --sign contract.txt --out chosen", runPick},
        {"codes",
            {"Say what a result code means, and what to do. Without one, all of them.",
                "결과 코드의 뜻과 할 일을 알려 줍니다. 코드를 주지 않으면 모두 보여 줍니다."},
            {{"N", Value::Text, {"The code's number or name", "코드의 번호나 이름"}, false}}, {},
            "sigildesk codes 1113", runCodes},
    };
    return table;
}

} // namespace host

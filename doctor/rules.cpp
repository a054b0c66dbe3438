// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/rules.h"

#include <sigildesk/codes.h>

#include <algorithm>

namespace sigil {

namespace {

constexpr Rule table[] = {
    {"listed", {"The list shows it.", "목록에 나옵니다."}, {"", ""}},

    // files of a pair
    {"certificate_missing", {"The signing certificate {0} is not there.", "서명용 인증서 {0} 파일이 없습니다."},
        {"Copy the certificate that belongs to the other files of this place beside them.",
            "이곳의 다른 파일과 짝이 되는 인증서를 함께 복사하십시오."}},
    {"key_missing", {"The private key {0} is not there.", "개인키 {0} 파일이 없습니다."},
        {"Copy the key file from where the certificate was issued; without it nothing can be signed.",
            "인증서를 발급받은 곳에서 개인키 파일도 복사하십시오. 개인키가 없으면 서명할 수 없습니다."}},
    {"certificate_too_large",
        {"{0} has {1} bytes; a certificate may have 4096.",
            "{0} 크기가 {1}바이트입니다. 인증서는 4096바이트까지입니다."},
        {"This is hardly a certificate alone; put the user's certificate in its place.",
            "인증서 하나가 아닌 것 같습니다. 사용자 인증서만 넣으십시오."}},
    {"key_too_large",
        {"{0} has {1} bytes; a key file may have 4096.",
            "{0} 크기가 {1}바이트입니다. 개인키 파일은 4096바이트까지입니다."},
        {"Put the key file as it was issued in its place.", "발급받은 그대로의 개인키 파일을 넣으십시오."}},
    {"file_unreadable", {"{0} cannot be read by {1}: {2}.", "{1} 사용자가 {0} 파일을 읽을 수 없습니다: {2}."},
        {"Make it readable for the user who lists (chown, chmod), or check the disk.",
            "목록을 보는 사용자가 읽을 수 있게 하거나(chown, chmod) 디스크를 점검하십시오."}},
    {"is_folder", {"{0} is a folder where a file is to be.", "파일이 있어야 할 자리에 폴더 {0}이(가) 있습니다."},
        {"Move the folder away and put the file there.", "폴더를 옮기고 그 자리에 파일을 넣으십시오."}},
    {"is_pipe", {"{0} is a pipe where a file is to be.", "파일이 있어야 할 자리에 파이프 {0}이(가) 있습니다."},
        {"Delete the pipe and put the file there.", "파이프를 지우고 그 자리에 파일을 넣으십시오."}},
    {"is_socket", {"{0} is a socket where a file is to be.", "파일이 있어야 할 자리에 소켓 {0}이(가) 있습니다."},
        {"Delete the socket and put the file there.", "소켓을 지우고 그 자리에 파일을 넣으십시오."}},
    {"is_device", {"{0} is a device where a file is to be.", "파일이 있어야 할 자리에 장치 {0}이(가) 있습니다."},
        {"Delete the device and put the file there.", "장치를 지우고 그 자리에 파일을 넣으십시오."}},
    {"link",
        {"{0} is a symbolic link; the list does not follow links to certificates.",
            "{0}은(는) 심볼릭 링크입니다. 목록은 인증서에 대한 링크를 따라가지 않습니다."},
        {"Copy what it leads to in its place.", "링크 대신 원본을 그 자리에 복사하십시오."}},
    {"link_leads_nowhere",
        {"{0} is a symbolic link that leads nowhere.", "{0}은(는) 대상이 없는 심볼릭 링크입니다."},
        {"Delete the link and put what it led to in its place.", "링크를 지우고 원본을 그 자리에 넣으십시오."}},

    // contents
    {"certificate_empty", {"{0} is empty.", "{0} 파일이 비어 있습니다."},
        {"Copy the certificate again; the copy was interrupted.",
            "복사가 중단된 것 같습니다. 인증서를 다시 복사하십시오."}},
    {"certificate_of_other_kind",
        {"{0} holds no certificate but {1}.", "{0} 파일의 내용은 인증서가 아니라 {1}입니다."},
        {"Put the certificate itself there; \"sigildesk import\" takes a PKCS#12 file.",
            "인증서 파일을 넣으십시오. PKCS#12 파일은 \"sigildesk import\"로 가져옵니다."}},
    {"certificate_cut_short",
        {"{0} ends too early: {1} of {2} bytes are there.",
            "{0} 파일이 중간에 끊겼습니다: {2}바이트 중 {1}바이트만 있습니다."},
        {"Copy the certificate again from where it was issued.", "발급받은 곳에서 인증서를 다시 복사하십시오."}},
    {"certificate_damaged", {"{0} is damaged at byte {1}.", "{0} 파일이 {1}번째 바이트에서 손상되었습니다."},
        {"Copy the certificate again from where it was issued.", "발급받은 곳에서 인증서를 다시 복사하십시오."}},
    {"certificate_refused",
        {"{0} is whole, but the toolkit refuses it: {1}.",
            "{0} 파일은 온전하지만 툴킷이 받아들이지 않습니다: {1}."},
        {"Copy the certificate again from where it was issued, or try the other toolkit.",
            "발급받은 곳에서 인증서를 다시 복사하거나 다른 툴킷으로 시도하십시오."}},
    {"field_unreadable",
        {"{0} cannot be read whole: {1} failed ({2}).", "{0} 인증서를 끝까지 읽을 수 없습니다: {1} 실패 ({2})."},
        {"Have the certificate reissued, or try the other toolkit.",
            "인증서를 재발급받거나 다른 툴킷으로 시도하십시오."}},
    {"key_empty",
        {"{0} is empty: the certificate is listed, but cannot be used.",
            "{0} 파일이 비어 있습니다. 인증서는 목록에 나오지만 사용할 수 없습니다."},
        {"Copy the key file again; the copy was interrupted.",
            "복사가 중단된 것 같습니다. 개인키를 다시 복사하십시오."}},
    {"key_of_other_kind",
        {"{0} holds no encrypted key but {1}: the certificate is listed, but cannot be used.",
            "{0} 파일의 내용은 암호화된 개인키가 아니라 {1}입니다. 인증서는 목록에 나오지만 사용할 수 없습니다."},
        {"Put the key file as it was issued in its place.", "발급받은 그대로의 개인키 파일을 넣으십시오."}},
    {"key_cut_short",
        {"{0} ends too early: {1} of {2} bytes are there. The certificate is listed, but cannot be used.",
            "{0} 파일이 중간에 끊겼습니다: {2}바이트 중 {1}바이트만 있습니다. 인증서는 목록에 나오지만 사용할 수 "
            "없습니다."},
        {"Copy the key file again from where it was issued.", "발급받은 곳에서 개인키 파일을 다시 복사하십시오."}},
    {"key_damaged",
        {"{0} is damaged at byte {1}: the certificate is listed, but cannot be used.",
            "{0} 파일이 {1}번째 바이트에서 손상되었습니다. 인증서는 목록에 나오지만 사용할 수 없습니다."},
        {"Copy the key file again from where it was issued.", "발급받은 곳에서 개인키 파일을 다시 복사하십시오."}},
    {"key_refused",
        {"{0} is of a kind that is not known here: the certificate is listed, but cannot be used. {1}",
            "{0} 파일의 형식을 알 수 없습니다. 인증서는 목록에 나오지만 사용할 수 없습니다. {1}"},
        {"Put the key file as it was issued in its place.", "발급받은 그대로의 개인키 파일을 넣으십시오."}},

    // key-management pairs
    {"km_pair_missing",
        {"It has no whole key-management pair, and only certificates with one are wanted.",
            "암호용(키관리용) 쌍이 있는 인증서만 요청했지만 온전한 쌍이 없습니다."},
        {"Copy kmCert.der and kmPri.key too, or list certificates without such a pair as well.",
            "kmCert.der와 kmPri.key도 복사하거나, 쌍이 없는 인증서도 목록에 넣으십시오."}},
    {"km_certificate_missing",
        {"The key-management key has no certificate: {0} is not there.",
            "암호용 개인키의 인증서 {0} 파일이 없습니다."},
        {"Copy the key-management certificate beside its key.", "암호용 인증서를 개인키 옆에 복사하십시오."}},
    {"km_key_missing",
        {"The key-management certificate has no key: {0} is not there.",
            "암호용 인증서의 개인키 {0} 파일이 없습니다."},
        {"Copy the key-management key beside its certificate; without it nothing can be decrypted.",
            "암호용 개인키를 인증서 옆에 복사하십시오. 없으면 복호화할 수 없습니다."}},
    {"km_certificate_unreadable",
        {"The key-management certificate {0} cannot be read, is no file, is empty or has more "
         "than 4096 bytes.",
            "암호용 인증서 {0}을(를) 읽을 수 없거나, 파일이 아니거나, 비어 있거나, 4096바이트보다 큽니다."},
        {"Put the file as it was issued in its place.", "발급받은 그대로의 파일을 넣으십시오."}},
    {"km_key_unreadable",
        {"The key-management key {0} cannot be read, is no file, is empty or has more than 4096 bytes.",
            "암호용 개인키 {0}을(를) 읽을 수 없거나, 파일이 아니거나, 비어 있거나, 4096바이트보다 큽니다."},
        {"Put the file as it was issued in its place.", "발급받은 그대로의 파일을 넣으십시오."}},

    // what the list was asked for
    {"expired_left_out",
        {"It is not valid today (until {0}), and only valid ones are wanted.",
            "지금 유효하지 않아(종료일 {0}) 유효한 인증서만 보는 목록에서 빠집니다."},
        {"Ask for expired certificates too, or have it renewed.",
            "만료된 인증서도 보도록 하거나 인증서를 갱신하십시오."}},
    {"not_expired",
        {"It has not expired (valid until {0}), and only expired ones are wanted.",
            "만료되지 않아(종료일 {0}) 만료된 인증서만 보는 목록에서 빠집니다."},
        {"Leave out --expired.", "--expired를 빼십시오."}},
    {"not_expiring",
        {"It does not end within the days asked for (valid until {0}).",
            "요청한 날수 안에 끝나지 않습니다(종료일 {0})."},
        {"Ask for more days, or leave out --expires-within.", "날수를 늘리거나 --expires-within을 빼십시오."}},
    {"policy_not_wanted", {"Its policy {0} is not among those wanted.", "정책 {0}이(가) 요청한 정책에 없습니다."},
        {"Ask for this policy too.", "이 정책도 요청하십시오."}},
    {"subject_not_wanted", {"Its subject {0} is not the one wanted.", "주체 {0}이(가) 요청한 주체와 다릅니다."},
        {"Ask for this subject, letter for letter.", "이 주체를 글자 그대로 요청하십시오."}},
    {"serial_not_wanted",
        {"Its serial number {0} is not the one wanted.", "일련번호 {0}이(가) 요청한 번호와 다릅니다."},
        {"Ask for this serial number.", "이 일련번호를 요청하십시오."}},
    {"issuer_not_wanted", {"Its issuer {0} is not the one wanted.", "발급자 {0}이(가) 요청한 발급자와 다릅니다."},
        {"Ask for this issuer.", "이 발급자를 요청하십시오."}},
    {"family_not_wanted", {"Certificates of the family {0} are not wanted.", "{0} 계열은 요청하지 않았습니다."},
        {"Ask for this family too.", "이 계열도 요청하십시오."}},
    {"family_differs",
        {"By the \"o=\" of its subject {0} it belongs to a family that is not wanted.",
            "주체 {0}의 \"o=\"에 따르면 요청하지 않은 계열의 인증서입니다."},
        {"Ask for the family of its organisation too.", "그 기관의 계열도 요청하십시오."}},

    // where it lies
    {"folder_not_known",
        {"The folder \"{0}\" is none that is looked into; known here: {1}.",
            "\"{0}\"은(는) 목록이 찾아보지 않는 폴더입니다. 여기서 아는 이름: {1}."},
        {"Move the certificate into a folder of a known name.", "아는 이름의 폴더로 인증서를 옮기십시오."}},
    {"folder_letter_case",
        {"The folder is spelt {0} and looked for as {1}.", "폴더 이름이 {0}인데 목록은 {1}을(를) 찾습니다."},
        {"Rename the folders to {1}, letter for letter.", "폴더 이름을 {1}과(와) 대소문자까지 같게 바꾸십시오."}},
    {"file_letter_case",
        {"The file is named {0} and looked for as {1}.", "파일 이름이 {0}인데 목록은 {1}을(를) 찾습니다."},
        {"Rename it to {1}, letter for letter.", "파일 이름을 {1}과(와) 대소문자까지 같게 바꾸십시오."}},
    {"file_name_not_known",
        {"The certificate is named {0} and looked for as {1}.",
            "인증서 파일 이름이 {0}인데 목록은 {1}을(를) 찾습니다."},
        {"Rename it to {1}, and its key likewise.", "이름을 {1}(으)로 바꾸고 개인키도 그렇게 하십시오."}},
    {"no_folder_of_its_own",
        {"The files lie in {0} itself; each certificate needs a folder of its own there.",
            "파일이 {0} 폴더에 바로 있습니다. 그 아래에 인증서마다 폴더가 하나씩 있어야 합니다."},
        {"Make a folder there, named after the subject, and move the files into it.",
            "그 아래에 주체 이름으로 폴더를 만들고 파일을 옮기십시오."}},
    {"too_deep", {"It lies too deep below {0}.", "{0} 아래로 너무 깊은 곳에 있습니다."},
        {"Move it up to where the list looks.", "목록이 찾는 위치로 올려 옮기십시오."}},
    {"names_of_other_family",
        {"In {1} the family {0} names its files in another way.", "{1}의 {0} 계열은 파일 이름을 다르게 씁니다."},
        {"Move the files into the folders of their own family.", "파일을 알맞은 계열의 폴더로 옮기십시오."}},
    {"family_not_on_medium",
        {"The folder {1} of the family {0} is not looked into on this medium.",
            "이 매체에서는 {0} 계열의 폴더 {1}을(를) 찾아보지 않습니다."},
        {"Copy it into the home folder.", "홈 폴더로 복사하십시오."}},
    {"folder_not_searched", {"{0} was not looked into.", "{0} 폴더를 찾아보지 못했습니다."},
        {"Check that the folder may be read, and list again.",
            "폴더를 읽을 수 있는지 확인하고 다시 시도하십시오."}},
    {"folder_unreadable", {"{0} cannot be read by {1}: {2}.", "{1} 사용자가 {0} 폴더를 읽을 수 없습니다: {2}."},
        {"Make it readable for the user who lists (chown, chmod), or check the disk.",
            "목록을 보는 사용자가 읽을 수 있게 하거나(chown, chmod) 디스크를 점검하십시오."}},
    {"not_a_folder",
        {"{0} is no folder, so nothing is found below it.",
            "{0}은(는) 폴더가 아니어서 그 아래를 찾을 수 없습니다."},
        {"Move it away and make a folder of this name.", "다른 곳으로 옮기고 같은 이름의 폴더를 만드십시오."}},
    {"path_too_long",
        {"The path has {0} bytes; 259 are read.", "경로가 {0}바이트입니다. 259바이트까지만 읽습니다."},
        {"Shorten the name of the certificate's folder.", "인증서 폴더의 이름을 줄이십시오."}},
    {"pkcs12_file",
        {"{0} is a PKCS#12 file, which the list does not read.", "{0}은(는) 목록이 읽지 않는 PKCS#12 파일입니다."},
        {"Take it in with \"sigildesk import\".", "\"sigildesk import\"로 가져오십시오."}},
    {"copied_elsewhere",
        {"{0} was written by a copy in the layout of another system, which the list does not read.",
            "{0}은(는) 목록이 읽지 않는 다른 시스템의 경로로 복사된 파일입니다."},
        {"Copy the certificate with \"sigildesk copy\", which writes where the list looks.",
            "목록이 찾는 곳에 쓰는 \"sigildesk copy\"로 다시 복사하십시오."}},
    {"outside_store", {"It lies in none of the stores {0}.", "인증서 저장소({0}) 안에 있지 않습니다."},
        {"Copy it into a store with \"sigildesk copy\".", "\"sigildesk copy\"로 저장소에 복사하십시오."}},
    {"list_not_built", {"No list could be made: {0} ({1})", "목록을 만들 수 없습니다: {0} ({1})"},
        {"Mend the library folder, the toolkit or the settings first.",
            "먼저 라이브러리 폴더, 툴킷, 설정 파일의 문제를 해결하십시오."}},
};

} // namespace

std::string BothLanguages::in(int language, const std::vector<std::string>& values) const
{
    std::string_view text = language == SIGIL_LANGUAGE_KOREAN ? korean : english;
    std::string filled;
    for (std::size_t at = text.find('{'); at != text.npos; at = text.find('{')) {
        const auto value = static_cast<std::size_t>(text[at + 1] - '0');
        filled.append(text.substr(0, at)).append(value < values.size() ? values[value] : "?");
        text.remove_prefix(at + 3); // "{0}"
    }
    return filled.append(text);
}

std::span<const Rule> rules() { return table; }

const Rule& ruleNamed(std::string_view name) { return *std::ranges::find(table, name, &Rule::name); }

} // namespace sigil

#include "certlist/copy_target.h"

#include "foundation/ascii.h"
#include "foundation/text_field.h"

#include <sys/stat.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace sigil {

namespace {

/** What a template's placeholder stands for. */
enum class Part { Organisation, Dn, Cn, ClassFolder };

/** "%s" stands for the base folder first, then for the parts in order. */
struct CopyTemplate {
    const char* signCert;
    const char* signKey;
    const char* kmCert;
    const char* kmKey;
    std::span<const Part> parts;
};

constexpr Part accreditedParts[] = {Part::Organisation, Part::Dn};
constexpr Part hardDiskParts[] = {Part::ClassFolder, Part::Cn};
constexpr Part removableParts[] = {Part::Cn};

constexpr CopyTemplate accredited{"%s\\NPKI\\%s\\User\\%s\\SignCert.der", "%s\\NPKI\\%s\\User\\%s\\SignPri.key",
    "%s\\NPKI\\%s\\User\\%s\\KmCert.der", "%s\\NPKI\\%s\\User\\%s\\KmPri.key", accreditedParts};

// The signing certificates of persons alone have a "/" behind the base folder; kept so.
constexpr CopyTemplate bodyOnHardDisk{"%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_sig.cer",
    "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_sig.key",
    "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_env.cer",
    "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_env.key", hardDiskParts};
constexpr CopyTemplate personOnHardDisk{"%s/Library/Preferences/GPKI/Certificate/%s/class2/%s_sig.cer",
    bodyOnHardDisk.signKey, bodyOnHardDisk.kmCert, bodyOnHardDisk.kmKey, hardDiskParts};

constexpr CopyTemplate bodyOnRemovable{"%s\\GPKI\\Certificate\\class1\\%s_sig.cer",
    "%s\\GPKI\\Certificate\\class1\\%s_sig.key", "%s\\GPKI\\Certificate\\class1\\%s_env.cer",
    "%s\\GPKI\\Certificate\\class1\\%s_env.key", removableParts};
constexpr CopyTemplate personOnRemovable{"%s\\GPKI\\Certificate\\class2\\%s_sig.cer",
    "%s\\GPKI\\Certificate\\class2\\%s_sig.key", "%s\\GPKI\\Certificate\\class2\\%s_env.cer",
    "%s\\GPKI\\Certificate\\class2\\%s_env.key", removableParts};

bool isPerson(const SubjectNames& subject) { return equalsIgnoringCase(subject.organisationUnit, "people"); }

const CopyTemplate* templateFor(bool toHardDisk, const SubjectNames& subject)
{
    if (equalsIgnoringCase(subject.organisation, "Halvard"))
        return nullptr;
    if (!equalsIgnoringCase(subject.organisation, "Government of Korea"))
        return &accredited;
    if (toHardDisk)
        return isPerson(subject) ? &personOnHardDisk : &bodyOnHardDisk;
    return isPerson(subject) ? &personOnRemovable : &bodyOnRemovable;
}

std::string partOf(const SubjectNames& subject, Part part)
{
    switch (part) {
    case Part::Organisation:
        return subject.organisation;
    case Part::Dn:
        return subject.dn;
    case Part::Cn:
        return subject.cn;
    case Part::ClassFolder: // the class folder in which listing finds such a certificate
        return isPerson(subject) ? "class2" : "class1";
    }
    return {};
}

std::string expand(const char* path, const char* base, const SubjectNames& subject, std::span<const Part> parts)
{
    std::string out;
    std::string_view rest = path;
    const auto substitute = [&](const std::string& text) {
        const std::size_t place = rest.find("%s");
        out.append(rest.substr(0, place)).append(text);
        rest.remove_prefix(place + 2);
    };
    substitute(base);
    for (Part part : parts) {
        std::string text = partOf(subject, part);
        std::replace(text.begin(), text.end(), '/', '_');
        substitute(text);
    }
    return out.append(rest);
}

/** A path that is too long stays empty and cannot be written: cut short, the four would name the same file. */
void setPath(char (&path)[260], const std::string& text)
{
    if (text.size() < sizeof path)
        copyText(path, text);
}

} // namespace

void formCopyPaths(bool toHardDisk, const char* base, const SubjectNames& subject, CertPaths& paths)
{
    const CopyTemplate* form = templateFor(toHardDisk, subject);
    if (!form)
        return;
    setPath(paths.signCert, expand(form->signCert, base, subject, form->parts));
    setPath(paths.signKey, expand(form->signKey, base, subject, form->parts));
    setPath(paths.kmCert, expand(form->kmCert, base, subject, form->parts));
    setPath(paths.kmKey, expand(form->kmKey, base, subject, form->parts));
}

void createFoldersOf(const char* path)
{
    const std::string_view whole(path);
    for (std::size_t slash = whole.find('/', 1); slash != whole.npos; slash = whole.find('/', slash + 1))
        mkdir(std::string(whole.substr(0, slash)).c_str(), S_IRWXU);
}

} // namespace sigil

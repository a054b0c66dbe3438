// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/copy_target.h"

#include "foundation/ascii.h"
#include "foundation/families.h"
#include "foundation/text_field.h"

#include <sys/stat.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace sigil {

namespace {

bool isPerson(const SubjectNames& subject) { return equalsIgnoringCase(subject.organisationUnit, "people"); }

/** Null for certificates that have no place to go. Organisations that no family names count as accredited ones. */
const CopyLayout* layoutFor(bool toHardDisk, const SubjectNames& subject)
{
    const Family* named = familyOfOrganisation(subject.organisation);
    const CopyLayouts& copies = (named ? named : familyWithCode(SIGIL_FAMILY_NPKI))->copies;
    if (isPerson(subject))
        return toHardDisk ? copies.personOnHardDisk : copies.personOnRemovable;
    return toHardDisk ? copies.hardDisk : copies.removable;
}

std::string partOf(const SubjectNames& subject, CopyPart part)
{
    switch (part) {
    case CopyPart::Organisation:
        return subject.organisation;
    case CopyPart::Dn:
        return subject.dn;
    case CopyPart::Cn:
        return subject.cn;
    default: // the class folder in which listing finds such a certificate
        return isPerson(subject) ? "class2" : "class1";
    }
}

std::string expand(const char* path, const char* base, const SubjectNames& subject, std::span<const CopyPart> parts)
{
    std::string out;
    std::string_view rest = path;
    const auto substitute = [&](const std::string& text) {
        const std::size_t place = rest.find("%s");
        out.append(rest.substr(0, place)).append(text);
        rest.remove_prefix(place + 2);
    };
    substitute(base);
    for (CopyPart part : parts) {
        std::string text = partOf(subject, part);
        std::replace(text.begin(), text.end(), '/', '_');
        substitute(text);
    }
    return out.append(rest);
}

/** A path that is too long stays empty and cannot be written: cut short, the four would name the same file. */
void setPath(char (&path)[pathCapacity], const std::string& text)
{
    if (text.size() < pathCapacity)
        copyText(path, text);
}

} // namespace

void formCopyPaths(bool toHardDisk, const char* base, const SubjectNames& subject, CertPaths& paths)
{
    const CopyLayout* form = layoutFor(toHardDisk, subject);
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

#include "certlist/store_layout.h"

#include "certlist/codes.h"
#include "certlist/entry.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace sigil {

namespace {

constexpr const char* gpkiFolders[] = {"/GPKI/Certificate/class1/", "/GPKI/Certificate/class2/"};
constexpr const char* npkiFolders[] = {"/NPKI/yessign/USER/", "/NPKI/SignKorea/USER/", "/NPKI/TradeSign/USER/",
    "/NPKI/CrossCert/USER/", "/NPKI/SignGate/USER/", "/NPKI/KICA/USER/", "/NPKI/NCASign/USER/"};
constexpr const char* mpkiFolders[] = {"/MPKI/USER/"};
constexpr const char* ppkiFolders[] = {"/Halvard/TALOCERT/TALO/", "/NPKI/TALO/User/"};
constexpr const char* ppkiRemovableFolders[] = {"/Halvard/TALOCERT/TALO/", "/NPKI/TALO/User/", "/TALO/User/"};

// Kept so: PPKI has two unused places in its hard-disk list, and although its folders on a removable disk are known,
// it has no place in the list there and is not searched. MPKI and PPKI paths carry a doubled "/".
constexpr FamilyLayout layouts[] = {
    {gpkiFolders, gpkiFolders, "", gpki, 2, 2, true, false},
    {npkiFolders, npkiFolders, "", npki, 7, 7, false, true},
    {mpkiFolders, mpkiFolders, "/", mpki, 1, 1, false, true},
    {ppkiFolders, ppkiRemovableFolders, "/", ppki, 4, 0, false, false},
};

constexpr std::string_view signCertMark = "_sig.cer";
constexpr std::size_t extension = std::string_view(".cer").size();

void setFilePaths(const std::string& path, tagCERTINFO& entry)
{
    const std::string stem = path.substr(0, path.size() - signCertMark.size());
    setText(entry, field::signCertPath, path);
    setText(entry, field::signKeyPath, path.substr(0, path.size() - extension) + ".key");
    setText(entry, field::kmCertPath, stem + "_env.cer");
    setText(entry, field::kmKeyPath, stem + "_env.key");
}

void setFolderPaths(const SearchedFolder& folder, const std::string& path, bool probesKmCert, tagCERTINFO& entry)
{
    const std::string kmCert = cutPath(path + "/kmCert.der");
    setText(entry, field::signCertPath, path + "/signCert.der");
    setText(entry, field::signKeyPath, path + "/signPri.key");
    // The certificate is probed for its key too, deliberately: a pair without its key file is noticed on reading.
    if (probesKmCert && !folder.canBeOpened(kmCert.c_str()))
        return;
    setText(entry, field::kmCertPath, kmCert);
    setText(entry, field::kmKeyPath, path + "/kmPri.key");
}

} // namespace

std::span<const char* const> FamilyLayout::folders(int medium) const
{
    if (medium == hardDisk)
        return hardDiskFolders;
    return medium == removableDisk ? removableFolders : std::span<const char* const>();
}

int FamilyLayout::slots(int medium) const { return medium == removableDisk ? removableSlots : hardDiskSlots; }

const FamilyLayout* familyLayout(int code)
{
    const auto* layout =
        std::find_if(std::begin(layouts), std::end(layouts), [&](const FamilyLayout& l) { return l.code == code; });
    return layout == std::end(layouts) ? nullptr : layout;
}

std::string cutPath(std::string path)
{
    constexpr std::size_t longest = sizeof(tagCERTINFO::szSignCertPath) - 1;
    path.resize(std::min(path.size(), longest));
    return path;
}

bool isCandidate(const FamilyLayout& family, const SearchedFolder& folder, const dirent& item)
{
    if (family.filePerCertificate)
        return std::strstr(item.d_name, signCertMark.data()) && folder.kindOf(item) == S_IFREG;
    const std::string_view name = item.d_name;
    return name != "." && name != ".." && folder.kindOf(item) == S_IFDIR;
}

void setPaths(const FamilyLayout& family, const SearchedFolder& folder, const char* name, tagCERTINFO& entry)
{
    if (family.filePerCertificate)
        setFilePaths(cutPath(folder.path() + name), entry);
    else
        setFolderPaths(folder, folder.path() + family.separator + name, family.probesKmCert, entry);
}

} // namespace sigil

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The lists that must stay equal: what the headers declare, what the objects export, the table of members, and the
// toolkits' functions.

#include "tests/facade/member.h"
#include "tests/support/files.h"
#include "tests/support/symbols.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

namespace {

using NameSet = std::set<std::string>;

/** "BINSTR* certificate" without its name: "BINSTR*". */
std::string typeOf(const std::string& parameter)
{
    const auto start = parameter.find_first_not_of(" \n");
    return parameter.substr(start, parameter.find_last_of(' ') - start);
}

/** The functions that a header declares, as the demangler writes them. */
void addDeclared(const std::string& header, NameSet& names)
{
    for (auto at = header.find("SIGIL_EXPORT "); at != std::string::npos;
         at = header.find("SIGIL_EXPORT ", at + 1)) {
        const auto open = header.find('(', at);
        const std::string before = header.substr(at, open - at);
        std::istringstream parameters(header.substr(open + 1, header.find(')', open) - open - 1));
        std::string types;
        for (std::string parameter; std::getline(parameters, parameter, ',');)
            types += (types.empty() ? "" : ", ") + typeOf(parameter);
        names.insert(before.substr(before.find_last_of(' ') + 1) + "(" + types + ")");
    }
}

NameSet declared()
{
    NameSet names;
    for (const auto& entry : std::filesystem::directory_iterator(FACADE_HEADERS))
        addDeclared(readFile(entry.path()), names);
    return names;
}

std::string withoutTypes(const std::string& function) { return function.substr(0, function.find('(')); }

} // namespace

TEST(Interface, ObjectsExportExactlyWhatTheHeadersDeclare) { EXPECT_EQ(functionsOf(FACADE_ALONE), declared()); }

TEST(Interface, EveryHeaderIsPartOfTheUmbrella)
{
    const std::string umbrella = readFile(std::string(FACADE_HEADERS) + ".h");
    for (const auto& entry : std::filesystem::directory_iterator(FACADE_HEADERS))
        EXPECT_NE(umbrella.find("<sigildesk/crypto/" + entry.path().filename().string() + ">"), std::string::npos)
            << entry.path();
}

TEST(Interface, EveryMemberIsInTheTable)
{
    NameSet members, frame;
    for (const Member& member : allMembers())
        EXPECT_TRUE(members.insert(member.name).second) << member.name << " is in the table twice";
    for (const std::string& function : declared())
        (function.starts_with("HV_") ? frame : members).insert(withoutTypes(function));
    EXPECT_EQ(members.size(), allMembers().size()) << "a member is exported that the table does not hold";
    EXPECT_EQ(frame,
        (NameSet{"HV_Initalize", "HV_Finish", "HV_GetErrInfo", "HV_GetErrInfo2", "HV_GetVersion", "HV_SetOption",
            "HV_SetConfFile", "HV_SetCaPubs", "HV_FreeCaPubs", "HV_Str2Time", "HV_SetHashAlg", "HV_BINSTR_Create",
            "HV_BINSTR_Delete", "HV_BINSTR_SetData"}))
        << "tested by hand in frame_test.cpp";
}

TEST(Interface, EverySymbolOfTheDoublesIsBoundByAMember)
{
    // Bound by the frame and by methods that no export reaches; frame_test.cpp and backend_test.cpp call them.
    NameSet bound{"HVTK_API_Init", "HVTK_API_Finish", "HVTK_API_GetErrInfo", "HVTK_API_GetInfo",
        "HVTK_API_SetConfFile", "HVTK_API_SetHashAlgo", "HVTK_BINSTR_Create", "HVTK_BINSTR_Delete",
        "HVTK_BINSTR_SetData", "HVTK_CERT_SetCaPubs", "HVTK_CERT_FreeCaPubs", "HVTK_CERT_GetSubjectName_DERFormat",
        "HVTK_CERT_GetPolicyConstraints", "HVTK_CMS_GetEnvDataRecipCnt", "HVTK_CMS_GetEnvDataRecipInfo",
        "HVTK_CMS_MakeEnvelopedData_WithContent_File", "HVTK_PKCS11_OpenSession", "HVTK_OCSP_CheckCertStatus",
        "HVTK_CRYPT_SignFile", "GPKI_API_Init", "GPKI_API_Finish", "GPKI_API_GetErrInfo", "GPKI_API_GetVersion",
        "GPKI_API_GetInfo", "GPKI_API_SetOption", "GPKI_API_SetConfFile", "GPKI_API_SetCaPubs",
        "GPKI_API_FreeCaPubs", "GPKI_API_Str2Time", "GPKI_API_SetHashAlgo", "GPKI_BINSTR_Create",
        "GPKI_BINSTR_Delete", "GPKI_BINSTR_SetData", "GPKI_CMS_ProcessSignedData",
        "GPKI_CMS_MakeEnvelopedData_NoContent_File", "GPKI_WCMS_MakeSignedContent",
        "GPKI_WCMS_ProcessSignedContent", "GPKI_WCMS_MakeWapEnvelopedData", "GPKI_WCMS_ProcessWapEnvelopedData",
        "GPKI_CRYPT_Sign_File"};
    for (const Member& member : allMembers())
        for (int type : {0, 1})
            for (const std::string& symbol : member.symbolsOn(type))
                bound.insert(symbol);
    NameSet offered = functionsOf(DOUBLES_FOLDER "/libHVCToolkitV30.so");
    offered.merge(functionsOf(DOUBLES_FOLDER "/libgpkiapi_v15.so"));
    EXPECT_EQ(offered, bound);
}

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A host in plain C: host LIBRARY_FOLDER STORE CERTIFICATE. Prints how many functions it has, the certificate's subject as
// the façade tells it, and the list of the store.

#include <sigildesk/flat.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef void (*Function)(void);

#define FUNCTION(name) (Function) name,
static const Function functions[] = {
#include "functions.inc"
};

static void expect(int result, const char* what)
{
    if (result == SIGIL_SUCCESS)
        return;
    struct SigilCodeText text;
    sigil_code_text(result, SIGIL_LANGUAGE_ENGLISH, &text);
    fprintf(stderr, "%s: %d %s\n", what, result, text.sentence);
    exit(1);
}

static void printFunctions(void)
{
    size_t present = 0;
    for (size_t i = 0; i < sizeof functions / sizeof functions[0]; ++i)
        present += functions[i] != NULL;
    printf("functions\t%zu\n", present);
}

static void printSubject(char* libraryFolder, const char* file)
{
    unsigned char der[4096];
    FILE* stream = fopen(file, "rb");
    const size_t length = stream ? fread(der, 1, sizeof der, stream) : 0;
    if (stream)
        fclose(stream);

    char subject[1024] = "";
    BINSTR certificate;
    void* crypto = NULL;
    expect(HV_Initalize(&crypto, SIGIL_TOOLKIT_MAKER, libraryFolder), "HV_Initalize");
    expect(HV_BINSTR_Create(crypto, &certificate), "HV_BINSTR_Create");
    expect(HV_BINSTR_SetData(crypto, der, (int)length, &certificate), "HV_BINSTR_SetData");
    expect(CertLoad(crypto, &certificate), "CertLoad");
    expect(CertGetSubjectName(crypto, sizeof subject, subject), "CertGetSubjectName");
    expect(HV_BINSTR_Delete(crypto, &certificate), "HV_BINSTR_Delete");
    HV_Finish(crypto);
    printf("subject\t%s\n", subject);
}

static void printEntry(void* list, int index)
{
    tagCERTINFO* entry = calloc(1, sizeof *entry);
    expect(CLP_GetCertInfo(list, index, entry), "CLP_GetCertInfo");
    printf("entry\t%s\t%s\t%d\t%d\n", entry->szSignCertPath, entry->szSubjectDN, entry->nSignCertLen,
        entry->nMediaType);
    free(entry);
}

static void printList(char* libraryFolder, char* store)
{
    void* list = NULL;
    tagLOADCERTOPT* options = calloc(1, sizeof *options);
    options->nPKITypes = SIGIL_FAMILY_NPKI;
    expect(CLP_Initalize(&list, NULL, SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_ENGLISH, libraryFolder), "CLP_Initalize");
    expect(CLP_SetType(list, options), "CLP_SetType");
    expect(CLP_SetMediaType(list, SIGIL_MEDIUM_REMOVABLE_DISK, store, 0), "CLP_SetMediaType");
    expect(CLP_LoadCertList(list), "CLP_LoadCertList");
    const int count = CLP_GetCertCount(list);
    for (int i = 0; i < count; ++i)
        printEntry(list, i);
    expect(CLP_UnInitalize(list), "CLP_UnInitalize");
    free(options);
}

int main(int count, char** words)
{
    if (count != 4)
        return 2;
    printFunctions();
    printSubject(words[1], words[3]);
    printList(words[1], words[2]);
    return 0;
}

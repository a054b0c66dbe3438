// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/* A host written in C: calls the entry points and prints what they answer.
 *
 * usage: ui_c_host MODE FOLDER */

#include <sigildesk/dialogs.h>

#include "tests/ui/c_host.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static tagINITOPT init;
static tagLOADSELECTCERTOPTION load;
static tagSELCERTINFO result;

static void print(const char* what, int rv)
{
    printf("%s %d key=%.*s subject=%s\n", what, rv, result.nSignPriKeyLen, (const char*)result.bySignPriKey,
        result.szSubjectDN);
    fflush(stdout);
}

static int showShared(void)
{
    memset(&result, 'x', sizeof result);
    result.nSignPriKeyLen = 1;
    result.szSubjectDN[1] = '\0';
    return ShowUserCert(NULL, NULL, &init, &load, NULL, NULL, &result);
}

static int showOwn(void) { return ShowUserCert_T(&init, &load, NULL, NULL, &result); }

static void chooseThenCancelThenClose(void)
{
    userChooses();
    print("chosen", showShared());
    userCancels();
    print("cancelled", showShared());
    userCloses();
    print("closed", showShared());
    exit(0);
}

static void openOnMemory(void)
{
    load.byMemoryCert = 1;
    load.nMemorySignCertLen = 4;
    memcpy(load.byMemorySignCert, "cert", 4);
    load.nMemorySignPriKeyLen = 10;
    memcpy(load.byMemorySignPriKey, "memory key", 10);
    userCancelsWhileHolding("memory key");
    print("memory", showShared());
    printf("kept %d\n", sharedDialogHolds("memory key"));
    refuseToStart(1010);
    print("refused", showShared());
    printf("kept after refusal %d\n", sharedDialogHolds("memory key"));
    exit(0);
}

static void chooseThenLoseTheLoop(void)
{
    userChooses();
    print("chosen", showShared());
    loopEndsUnderTheDialog();
    print("ended", showShared());
    printSharedDialog();
    exit(0);
}

static void startWithoutInitOptions(void)
{
    printf("no init %d\n", ShowUserCert(NULL, NULL, NULL, &load, NULL, NULL, &result));
    quitLoop(7);
}

static void failToStart(void)
{
    refuseToStart(1010);
    print("refused", showShared());
    printSharedDialog();
    exit(0);
}

static void runDry(void)
{
    clockLacksMemory(1);
    print("before", showShared());
    clockLacksMemory(0);
    userRunsDry();
    print("meanwhile", showShared());
    clockLacksMemory(0);
    userChooses();
    print("chosen", showShared());
    exit(0);
}

static void quitAfterADialog(void)
{
    userCancels();
    print("cancelled", showShared());
    endWhenLoopIsEnteredAgain();
    quitLoop(7);
}

static void quitAtOnce(void) { quitLoop(7); }

static int sharedMode(const char* mode, int argc, char** argv)
{
    if (strcmp(mode, "shared") == 0)
        whenLoopRuns(chooseThenCancelThenClose);
    else if (strcmp(mode, "memory") == 0)
        whenLoopRuns(openOnMemory);
    else if (strcmp(mode, "refused") == 0)
        whenLoopRuns(failToStart);
    else if (strcmp(mode, "ended") == 0)
        whenLoopRuns(chooseThenLoseTheLoop);
    else if (strcmp(mode, "no-init") == 0)
        whenLoopRuns(startWithoutInitOptions);
    else if (strcmp(mode, "stays") == 0)
        whenLoopRuns(quitAfterADialog);
    else if (strcmp(mode, "dry") == 0)
        whenLoopRuns(runDry);
    else if (strcmp(mode, "quit") == 0 || strcmp(mode, "given") == 0 || strcmp(mode, "dry-init") == 0)
        whenLoopRuns(quitAtOnce);
    else
        return 2;
    if (strcmp(mode, "given") == 0)
        giveSharedObjects(&argc, argv);
    if (strcmp(mode, "dry-init") == 0) {
        lackMemoryOnce();
        printf("init %d\n", ShowUserCertInit(argc, argv));
    }
    printf("init %d\n", ShowUserCertInit(argc, argv));
    if (strcmp(mode, "given") == 0)
        printf("left %d\n", countSharedObjects());
    return 0;
}

static int ownMode(int argc, char** argv)
{
    makeApplication(&argc, argv);
    userChooses();
    print("chosen", showOwn());
    userCancels();
    print("cancelled", showOwn());
    userCloses();
    print("closed", showOwn());
    userChooses();
    printf("no result %d\n", ShowUserCert_T(&init, &load, NULL, NULL, NULL));
    userChooses();
    printf("no load %d\n", ShowUserCert_T(&init, NULL, NULL, NULL, &result));
    printf("no init %d\n", ShowUserCert_T(NULL, &load, NULL, NULL, &result));
    refuseToStart(1007);
    print("refused", showOwn());
    return 0;
}

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    strncpy(init.szLibraryFolder, argv[2], sizeof init.szLibraryFolder - 1);
    init.nLanguage = SIGIL_LANGUAGE_KOREAN;
    if (strcmp(argv[1], "early") == 0) {
        printf("started\n");
        fflush(stdout);
        alarm(1);
        showShared();
        printf("returned\n");
        return 0;
    }
    if (strcmp(argv[1], "own") == 0)
        return ownMode(argc, argv);
    return sharedMode(argv[1], argc, argv);
}

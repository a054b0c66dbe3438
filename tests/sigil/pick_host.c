// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/* A host that lets its user pick and signs with what was picked:

       pick_host LIBRARY_FOLDER TOOLKIT LISTED_DISK SIGNATURE CERTIFICATE [OPTION=VALUE...]

   LISTED_DISK is "home" for the home folder, which is examined too, and empty for none. Says "CODE ERROR TEXT" of the picking, then
   "ENTRY of ENTRIES, UNLOCKED: NAME, FILE", the code of a copy to nowhere, whether the entry is unlocked after it was locked, and
   how many files were open before the picking and are open after it. */

#include <sigil.h>

#include <dirent.h>
#include <signal.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/time.h>

static SigilSession* session;

static void check(int code)
{
    if (code == SIGIL_SUCCESS)
        return;
    fprintf(stderr, "%d: %s\n", code, sigil_error_text(session));
    exit(1);
}

static void write_bytes(const char* path, const SigilBytes* bytes)
{
    FILE* file = fopen(path, "wb");
    if (!file || fwrite(bytes->data, 1, bytes->size, file) != bytes->size || fclose(file) != 0)
        exit(1);
}

static int open_files(void)
{
    DIR* folder = opendir("/proc/self/fd");
    int count = 0;
    while (readdir(folder))
        ++count;
    closedir(folder);
    return count;
}

static void on_alarm(int number) { (void)number; }

/* Interrupts what waits every few milliseconds; 0 ends it. */
static void interrupt_every(int microseconds)
{
    const struct sigaction action = {.sa_handler = on_alarm};
    const struct itimerval interval = {{0, microseconds}, {0, microseconds}};
    sigaction(SIGALRM, &action, NULL);
    setitimer(ITIMER_REAL, &interval, NULL);
}

static void sign_with(int entry, const char* signature, const char* der)
{
    SigilBytes message = {NULL, 0}, certificate = {NULL, 0};
    check(sigil_sign(session, entry, NULL, "text", 4, &message));
    check(sigil_certificate(session, entry, SIGIL_PAIR_SIGNING, &certificate));
    write_bytes(signature, &message);
    write_bytes(der, &certificate);
    sigil_free(&certificate);
    sigil_free(&message);
}

/* Sets the option of "OPTION=VALUE". */
static void set_option(SigilPickOptions* options, char* word)
{
    static const struct {
        const char* name;
        size_t place;
    } texts[] = {{"policies", offsetof(SigilPickOptions, policies)},
        {"subject", offsetof(SigilPickOptions, subject)}, {"serial", offsetof(SigilPickOptions, serial)}},
      numbers[] = {{"families", offsetof(SigilPickOptions, families)},
          {"with_km", offsetof(SigilPickOptions, with_km)}, {"no_expired", offsetof(SigilPickOptions, no_expired)},
          {"lock_expired", offsetof(SigilPickOptions, lock_expired)}};
    char* value = strchr(word, '=');
    size_t i = 0;
    if (!value)
        exit(2);
    *value++ = 0;
    for (i = 0; i < sizeof texts / sizeof *texts; ++i)
        if (strcmp(word, texts[i].name) == 0)
            memcpy((char*)options + texts[i].place, &value, sizeof value);
    for (i = 0; i < sizeof numbers / sizeof *numbers; ++i)
        if (strcmp(word, numbers[i].name) == 0)
            *(int*)(void*)((char*)options + numbers[i].place) = atoi(value);
}

/* Lists a disk, or the home folder, where no fewer findings are than entries. */
static int list(const char* disk)
{
    SigilListOptions listing = {.size = sizeof listing, .medium = disk};
    int entries = 0, findings = 0;
    if (!*disk)
        return 0;
    if (strcmp(disk, "home") == 0) {
        listing.medium = NULL;
        check(sigil_examine(session, NULL, &findings));
    }
    check(sigil_list(session, &listing, &entries));
    if (!listing.medium && findings < entries)
        exit(1);
    return entries;
}

int main(int count, char** words)
{
    SigilOpenOptions opening = {.size = sizeof opening};
    SigilPickOptions picking = {.size = sizeof picking, .no_expired = 1};
    SigilFields fields = {.size = sizeof fields};
    int entries = 0, entry = -7, code = 0, files = 0, i = 0;
    if (count < 6)
        return 2;
    for (i = 6; i < count; ++i)
        set_option(&picking, words[i]);
    signal(SIGCHLD, SIG_IGN); /* as hosts do that care for no child */
    opening.folder = words[1];
    opening.toolkit = atoi(words[2]);
    check(sigil_open(&opening, &session));
    entries = list(words[3]);
    files = open_files();
    interrupt_every(5000);
    code = sigil_pick(session, &picking, &entry);
    interrupt_every(0);
    printf("%d %s\n", code, sigil_error_text(session));
    if (code == SIGIL_SUCCESS) {
        check(sigil_fields(session, entry, &fields));
        printf("%d of %d, %d: %s, %s\n", entry, entries, fields.unlocked, fields.name, fields.certificate_file);
        printf("copied: %d\n", sigil_copy(session, entry, "/no/such/folder", 0));
        sign_with(entry, words[4], words[5]);
        check(sigil_lock(session, entry));
        check(sigil_fields(session, entry, &fields));
        printf("locked: %d\n", fields.unlocked);
    }
    printf("files: %d, %d\n", files, open_files());
    sigil_close(session);
    return code == SIGIL_SUCCESS || entry == -7 ? 0 : 1;
}

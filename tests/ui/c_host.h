// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the C host of the tests asks of the C++ side: to run it inside the event loop, and to act as its user.
 */
#ifndef SIGILDESK_TESTS_UI_C_HOST_H
#define SIGILDESK_TESTS_UI_C_HOST_H

#ifdef __cplusplus
extern "C" {
#endif

/** Runs @p what once, from inside the event loop of the application that is going to be made. */
void whenLoopRuns(void (*what)(void));

/** Makes the application of a host that owns it itself; it lives until the process ends. */
void makeApplication(int* argc, char** argv);

/** Lets the user of the next dialog choose the first certificate with a password, cancel, or close the window. */
void userChooses(void);
void userCancels(void);
void userCloses(void);

/** Lets the host end the event loop under the next dialog, after a password was typed; the loop's result is 5. */
void loopEndsUnderTheDialog(void);

/** Prints the title of the shared dialog, whether it is shown, and the password in its field. */
void printSharedDialog(void);

/** Whether the shared dialog holds these bytes. */
int sharedDialogHolds(const char* bytes);

/** As userCancels(); prints before whether the shared dialog holds these bytes. */
void userCancelsWhileHolding(const char* bytes);

/** Ends the event loop with this result. */
void quitLoop(int result);

/** Ends the process, and says so, once the event loop runs again after it has ended. */
void endWhenLoopIsEnteredAgain(void);

/** Whether the clock throws for lack of memory: a listing looks at it. */
void clockLacksMemory(int lacks);

/** Lets the user of the next dialog list the hard disk once more, with such a clock. */
void userRunsDry(void);

/** Refuses the next allocation. */
void lackMemoryOnce(void);

/** Makes the application and the shared dialog before ShowUserCertInit(), as a host that knows of them may. */
void giveSharedObjects(int* argc, char** argv);

/** How many of the two there are. */
int countSharedObjects(void);

/** Makes the processor refuse to start with this code. */
void refuseToStart(int code);

#ifdef __cplusplus
}
#endif

#endif

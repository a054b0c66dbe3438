// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What nearly every test of the dialogs includes, as tests/support/precompiled.h is for the others.
 */
#pragma once

#include "tests/support/precompiled.h"

#include <QtTest>
#include <QtWidgets>

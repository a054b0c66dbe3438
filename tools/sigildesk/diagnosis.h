// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The doctor, asked with the options of a command.
 */
#pragma once

#include "session.h"

#include "doctor/doctor.h"

namespace host {

/** What the doctor is to judge by: everything is wanted that the options take. */
sigil::DoctorQuestion question(const Session& session);

/** What he says of the medium that the options name. */
sigil::StoreReport examineMedium(const Session& session);

} // namespace host

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

use crate::memory::text_of;
use sigil_sys as sys;
use std::time::{Duration, SystemTime, UNIX_EPOCH};

/// What a certificate says. Texts are empty where it does not say.
#[derive(Clone, Debug, PartialEq, Eq)]
pub struct Fields {
    pub name: String,
    pub subject: String,
    pub issuer: String,
    pub issuer_name: String,
    pub serial: String,
    /// Name of the policy.
    pub purpose: String,
    /// Its OID, dotted.
    pub policy: String,
    pub policies: String,
    pub version: String,
    pub signature_algorithm: String,
    pub key_algorithm: String,
    pub key_length: String,
    pub key_usage: String,
    pub alternative_name: String,
    pub authority_key_id: String,
    pub subject_key_id: String,
    pub revocation_list: String,
    pub authority_access: String,
    pub certificate_file: String,
    pub key_file: String,
    pub km_certificate_file: String,
    pub km_key_file: String,
    pub valid_from: SystemTime,
    pub valid_to: SystemTime,
    pub days_left: i32,
    pub expired: bool,
    pub expires_soon: bool,
    pub has_key: bool,
    pub has_km: bool,
    pub unlocked: bool,
    /// 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI; 0 unknown.
    pub family: i32,
}

impl Fields {
    /// # Safety
    /// The texts of the record are the library's, still.
    pub(crate) unsafe fn from_raw(raw: &sys::SigilFields) -> Fields {
        Fields {
            name: text_of(raw.name),
            subject: text_of(raw.subject),
            issuer: text_of(raw.issuer),
            issuer_name: text_of(raw.issuer_name),
            serial: text_of(raw.serial),
            purpose: text_of(raw.use_),
            policy: text_of(raw.policy),
            policies: text_of(raw.policies),
            version: text_of(raw.version),
            signature_algorithm: text_of(raw.signature_algorithm),
            key_algorithm: text_of(raw.key_algorithm),
            key_length: text_of(raw.key_length),
            key_usage: text_of(raw.key_usage),
            alternative_name: text_of(raw.alternative_name),
            authority_key_id: text_of(raw.authority_key_id),
            subject_key_id: text_of(raw.subject_key_id),
            revocation_list: text_of(raw.revocation_list),
            authority_access: text_of(raw.authority_access),
            certificate_file: text_of(raw.certificate_file),
            key_file: text_of(raw.key_file),
            km_certificate_file: text_of(raw.km_certificate_file),
            km_key_file: text_of(raw.km_key_file),
            valid_from: time_of(raw.valid_from),
            valid_to: time_of(raw.valid_to),
            days_left: raw.days_left,
            expired: raw.expired != 0,
            expires_soon: raw.expires_soon != 0,
            has_key: raw.has_key != 0,
            has_km: raw.has_km != 0,
            unlocked: raw.unlocked != 0,
            family: raw.family,
        }
    }
}

/// Seconds since 1970 as a time.
pub(crate) fn time_of(seconds: i64) -> SystemTime {
    let distance = Duration::from_secs(seconds.unsigned_abs());
    if seconds < 0 { UNIX_EPOCH - distance } else { UNIX_EPOCH + distance }
}

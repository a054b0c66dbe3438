// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! What `<sigil.h>` declares, as it is there. The header documents every function.

use std::os::raw::{c_char, c_int, c_uchar, c_ulong, c_void};

#[repr(C)]
pub struct SigilSession {
    _private: [u8; 0],
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilBytes {
    pub data: *mut c_uchar,
    pub size: usize,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilCodeText {
    pub code: c_int,
    pub name: *const c_char,
    pub layer: *const c_char,
    pub sentence: *const c_char,
    pub advice: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilOpenOptions {
    pub size: usize,
    pub folder: *const c_char,
    pub toolkit: c_int,
    pub language: c_int,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilListOptions {
    pub size: usize,
    pub medium: *const c_char,
    pub issuer: *const c_char,
    pub policy: *const c_char,
    pub subject: *const c_char,
    pub serial: *const c_char,
    pub families: c_int,
    pub expires_within: c_int,
    pub valid: c_int,
    pub expired: c_int,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilFields {
    pub size: usize,
    pub valid_from: i64,
    pub valid_to: i64,
    pub days_left: c_int,
    pub expired: c_int,
    pub expires_soon: c_int,
    pub family: c_int,
    pub has_key: c_int,
    pub has_km: c_int,
    pub unlocked: c_int,
    pub name: *const c_char,
    pub subject: *const c_char,
    pub issuer: *const c_char,
    pub issuer_name: *const c_char,
    pub serial: *const c_char,
    pub use_: *const c_char,
    pub policy: *const c_char,
    pub version: *const c_char,
    pub signature_algorithm: *const c_char,
    pub key_algorithm: *const c_char,
    pub key_length: *const c_char,
    pub key_usage: *const c_char,
    pub policies: *const c_char,
    pub alternative_name: *const c_char,
    pub authority_key_id: *const c_char,
    pub subject_key_id: *const c_char,
    pub revocation_list: *const c_char,
    pub authority_access: *const c_char,
    pub certificate_file: *const c_char,
    pub key_file: *const c_char,
    pub km_certificate_file: *const c_char,
    pub km_key_file: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilSignOptions {
    pub size: usize,
    pub form: c_int,
    pub stamp_url: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilSigner {
    pub size: usize,
    pub signing_time: i64,
    pub stamp_time: i64,
    pub stamp_code: c_int,
    pub certificate: *const c_uchar,
    pub certificate_size: usize,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilPickOptions {
    pub size: usize,
    pub policies: *const c_char,
    pub subject: *const c_char,
    pub serial: *const c_char,
    pub families: c_int,
    pub with_km: c_int,
    pub no_expired: c_int,
    pub lock_expired: c_int,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilJudgeOptions {
    pub size: usize,
    pub trusted: *const SigilBytes,
    pub trusted_count: c_int,
    pub purpose: c_int,
    pub time: i64,
    pub no_revocation: c_int,
    pub responder: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilStatus {
    pub size: usize,
    pub revoked: c_int,
    pub by_list: c_int,
    pub revoked_at: i64,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilStamp {
    pub size: usize,
    pub time: i64,
    pub policy: *const c_char,
    pub serial: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilToken {
    pub size: usize,
    pub slot: c_ulong,
    pub initialised: c_int,
    pub certificates: c_int,
    pub label: *const c_char,
    pub maker: *const c_char,
    pub model: *const c_char,
    pub serial: *const c_char,
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct SigilFinding {
    pub size: usize,
    pub listed: c_int,
    pub path: *const c_char,
    pub rule: *const c_char,
    pub detail: *const c_char,
    pub mend: *const c_char,
}

/// For `sigil_lock`: every entry.
pub const SIGIL_ALL_ENTRIES: c_int = -1;
/// `sigil_pick`: nothing was chosen.
pub const SIGIL_CANCELLED: c_int = -1;

extern "C" {
    pub fn sigil_code_text(code: c_int, language: c_int, text: *mut SigilCodeText) -> c_int;
    pub fn sigil_free(bytes: *mut SigilBytes);
    pub fn sigil_version() -> *const c_char;
    pub fn sigil_open(options: *const SigilOpenOptions, session: *mut *mut SigilSession) -> c_int;
    pub fn sigil_close(session: *mut SigilSession);
    pub fn sigil_error_text(session: *const SigilSession) -> *const c_char;
    pub fn sigil_list(session: *mut SigilSession, options: *const SigilListOptions, count: *mut c_int) -> c_int;
    pub fn sigil_fields(session: *mut SigilSession, entry: c_int, fields: *mut SigilFields) -> c_int;
    pub fn sigil_certificate_fields(
        session: *mut SigilSession, certificate: *const c_void, size: usize, fields: *mut SigilFields,
    ) -> c_int;
    pub fn sigil_certificate(session: *mut SigilSession, entry: c_int, pair: c_int, certificate: *mut SigilBytes) -> c_int;
    pub fn sigil_unlock(session: *mut SigilSession, entry: c_int, password: *const c_char) -> c_int;
    pub fn sigil_lock(session: *mut SigilSession, entry: c_int) -> c_int;
    pub fn sigil_private_key(
        session: *mut SigilSession, entry: c_int, pair: c_int, new_password: *const c_char, key: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_identity(session: *mut SigilSession, entry: c_int, number: *const c_char) -> c_int;
    pub fn sigil_sign(
        session: *mut SigilSession, entry: c_int, options: *const SigilSignOptions, data: *const c_void, size: usize,
        signature: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_verify(
        session: *mut SigilSession, message: *const c_void, message_size: usize, data: *const c_void, data_size: usize,
        content: *mut SigilBytes, signers: *mut c_int,
    ) -> c_int;
    pub fn sigil_signer(session: *mut SigilSession, index: c_int, signer: *mut SigilSigner) -> c_int;
    pub fn sigil_verify_raw(
        session: *mut SigilSession, certificate: *const c_void, certificate_size: usize, data: *const c_void,
        data_size: usize, signature: *const c_void, signature_size: usize,
    ) -> c_int;
    pub fn sigil_encrypt(
        session: *mut SigilSession, cipher: c_int, recipients: *const SigilBytes, count: c_int, data: *const c_void,
        size: usize, message: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_decrypt(
        session: *mut SigilSession, entry: c_int, message: *const c_void, size: usize, content: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_pick(session: *mut SigilSession, options: *const SigilPickOptions, entry: *mut c_int) -> c_int;
    pub fn sigil_export(
        session: *mut SigilSession, entry: c_int, protection: c_int, password: *const c_char, pkcs12: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_import(
        session: *mut SigilSession, pkcs12: *const c_void, size: usize, password: *const c_char, medium: *const c_char,
        replace: c_int,
    ) -> c_int;
    pub fn sigil_copy(session: *mut SigilSession, entry: c_int, medium: *const c_char, replace: c_int) -> c_int;
    pub fn sigil_delete(session: *mut SigilSession, entry: c_int) -> c_int;
    pub fn sigil_change_password(
        session: *mut SigilSession, entry: c_int, old_password: *const c_char, new_password: *const c_char,
    ) -> c_int;
    pub fn sigil_verify_certificate(
        session: *mut SigilSession, options: *const SigilJudgeOptions, certificate: *const c_void, size: usize,
    ) -> c_int;
    pub fn sigil_status(
        session: *mut SigilSession, options: *const SigilJudgeOptions, certificate: *const c_void, size: usize,
        status: *mut SigilStatus,
    ) -> c_int;
    pub fn sigil_timestamp(
        session: *mut SigilSession, url: *const c_char, data: *const c_void, size: usize, token: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_stamp(
        session: *mut SigilSession, token: *const c_void, token_size: usize, data: *const c_void, data_size: usize,
        stamp: *mut SigilStamp,
    ) -> c_int;
    pub fn sigil_tokens(session: *mut SigilSession, count: *mut c_int) -> c_int;
    pub fn sigil_token(session: *mut SigilSession, index: c_int, token: *mut SigilToken) -> c_int;
    pub fn sigil_token_certificate(
        session: *mut SigilSession, token: c_int, index: c_int, certificate: *mut SigilBytes,
    ) -> c_int;
    pub fn sigil_examine(session: *mut SigilSession, medium: *const c_char, count: *mut c_int) -> c_int;
    pub fn sigil_finding(session: *mut SigilSession, index: c_int, finding: *mut SigilFinding) -> c_int;
}

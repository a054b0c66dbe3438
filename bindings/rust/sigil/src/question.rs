// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! What is asked about certificates, time stamps, tokens and stores.

use crate::fields::time_of;
use crate::memory::{text_of, Text};
use crate::{borrowed, start_of, Result, Session};
use sigil_sys as sys;
use std::mem::{size_of, zeroed};
use std::os::raw::c_int;
use std::ptr;
use std::time::{SystemTime, UNIX_EPOCH};

/// What a certificate is wanted for.
#[derive(Clone, Copy, Debug, Default, PartialEq, Eq)]
pub enum Purpose {
    #[default]
    Any = 0,
    Sign = 1,
    Encrypt = 2,
}

/// By what a certificate is judged; the default: the roots of the settings, any purpose, now, with revocation.
#[derive(Clone, Copy, Debug, Default)]
pub struct Judge<'a> {
    /// Roots and others of the path, DER or PEM; none for those of the settings.
    pub trusted: &'a [&'a [u8]],
    pub purpose: Purpose,
    /// When it is to hold; `None` for the present.
    pub time: Option<SystemTime>,
    /// Nobody is asked whether it is revoked.
    pub no_revocation: bool,
}

/// Whether a certificate is revoked.
#[derive(Clone, Debug, PartialEq, Eq)]
pub struct Status {
    pub revoked: bool,
    /// A revocation list says so; else a responder.
    pub by_list: bool,
    pub revoked_at: Option<SystemTime>,
}

/// What a time stamp says.
#[derive(Clone, Debug, PartialEq, Eq)]
pub struct Stamp {
    pub time: SystemTime,
    /// OID, dotted.
    pub policy: String,
    /// Hexadecimal.
    pub serial: String,
}

/// A token (PKCS#11) and the certificates on it, DER.
#[derive(Clone, Debug, PartialEq, Eq)]
pub struct Token {
    pub slot: u64,
    pub initialised: bool,
    pub label: String,
    pub maker: String,
    pub model: String,
    pub serial: String,
    pub certificates: Vec<Vec<u8>>,
}

/// What stands at one place, and why it is listed or not.
#[derive(Clone, Debug, PartialEq, Eq)]
pub struct Finding {
    pub listed: bool,
    pub path: String,
    /// Name of the rule, for a program.
    pub rule: String,
    pub detail: String,
    /// How to mend it; empty when there is nothing to mend.
    pub mend: String,
}

impl Session {
    /// Verifies path, validity, policies, purpose and revocation: 3200 to 3208 when the certificate is not valid.
    pub fn verify_certificate(&self, certificate: &[u8], judge: &Judge<'_>) -> Result<()> {
        let trusted = borrowed(judge.trusted);
        let mut options = judge_options(&trusted, &Text::optional(None)?);
        options.purpose = judge.purpose as c_int;
        options.time = judge.time.map_or(0, seconds_of);
        options.no_revocation = judge.no_revocation.into();
        self.check(unsafe {
            sys::sigil_verify_certificate(self.handle, &options, start_of(certificate), certificate.len())
        })
    }

    /// Asks whether a certificate is revoked: its responder or the one at this address, else its revocation list. 1605 when
    /// nobody can tell.
    pub fn status(&self, certificate: &[u8], trusted: &[&[u8]], responder: Option<&str>) -> Result<Status> {
        let (trusted, address) = (borrowed(trusted), Text::optional(responder)?);
        let options = judge_options(&trusted, &address);
        let mut told: sys::SigilStatus = unsafe { zeroed() };
        told.size = size_of::<sys::SigilStatus>();
        self.check(unsafe {
            sys::sigil_status(self.handle, &options, start_of(certificate), certificate.len(), &mut told)
        })?;
        Ok(Status {
            revoked: told.revoked != 0,
            by_list: told.by_list != 0,
            revoked_at: Some(told.revoked_at).filter(|time| *time != 0).map(time_of),
        })
    }

    /// A time-stamp token for the data from this authority (RFC 3161), verified.
    pub fn timestamp(&self, url: &str, data: &[u8]) -> Result<Vec<u8>> {
        let url = Text::new(url)?;
        self.bytes(|session, token| unsafe {
            sys::sigil_timestamp(session, url.pointer(), start_of(data), data.len(), token)
        })
    }

    /// Verifies a time-stamp token over the data that it is for, and reads it.
    pub fn stamp(&self, token: &[u8], data: &[u8]) -> Result<Stamp> {
        let mut told: sys::SigilStamp = unsafe { zeroed() };
        told.size = size_of::<sys::SigilStamp>();
        self.check(unsafe {
            sys::sigil_stamp(self.handle, start_of(token), token.len(), start_of(data), data.len(), &mut told)
        })?;
        let [policy, serial] = [told.policy, told.serial].map(|text| unsafe { text_of(text) });
        Ok(Stamp { time: time_of(told.time), policy, serial })
    }

    /// The tokens and the certificates on them. Nobody logs in.
    pub fn tokens(&self) -> Result<Vec<Token>> {
        let mut count = 0;
        self.check(unsafe { sys::sigil_tokens(self.handle, &mut count) })?;
        (0..count).map(|index| self.token(index)).collect()
    }

    /// Why certificates of the home folder, or of a mounted disk's folder, are listed or not.
    pub fn examine(&self, medium: Option<&str>) -> Result<Vec<Finding>> {
        let medium = Text::optional(medium)?;
        let mut count = 0;
        self.check(unsafe { sys::sigil_examine(self.handle, medium.pointer(), &mut count) })?;
        (0..count).map(|index| self.finding(index)).collect()
    }

    fn token(&self, index: c_int) -> Result<Token> {
        let mut told: sys::SigilToken = unsafe { zeroed() };
        told.size = size_of::<sys::SigilToken>();
        self.check(unsafe { sys::sigil_token(self.handle, index, &mut told) })?;
        let [label, maker, model, serial] =
            [told.label, told.maker, told.model, told.serial].map(|text| unsafe { text_of(text) });
        let certificate = |number| {
            self.bytes(|session, bytes| unsafe { sys::sigil_token_certificate(session, index, number, bytes) })
        };
        let certificates = (0..told.certificates).map(certificate).collect::<Result<_>>()?;
        Ok(Token { slot: told.slot.into(), initialised: told.initialised != 0, label, maker, model, serial, certificates })
    }

    fn finding(&self, index: c_int) -> Result<Finding> {
        let mut told: sys::SigilFinding = unsafe { zeroed() };
        told.size = size_of::<sys::SigilFinding>();
        self.check(unsafe { sys::sigil_finding(self.handle, index, &mut told) })?;
        let [path, rule, detail, mend] =
            [told.path, told.rule, told.detail, told.mend].map(|text| unsafe { text_of(text) });
        Ok(Finding { listed: told.listed != 0, path, rule, detail, mend })
    }
}

/// Options that hold as long as what they are made of.
fn judge_options(trusted: &[sys::SigilBytes], responder: &Text) -> sys::SigilJudgeOptions {
    sys::SigilJudgeOptions {
        size: size_of::<sys::SigilJudgeOptions>(),
        trusted: if trusted.is_empty() { ptr::null() } else { trusted.as_ptr() },
        trusted_count: trusted.len() as c_int,
        purpose: 0,
        time: 0,
        no_revocation: 0,
        responder: responder.pointer(),
    }
}

fn seconds_of(time: SystemTime) -> i64 {
    match time.duration_since(UNIX_EPOCH) {
        Ok(later) => later.as_secs() as i64,
        Err(earlier) => -(earlier.duration().as_secs() as i64),
    }
}

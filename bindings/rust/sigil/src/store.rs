// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! Entries that come from the dialog, and what is done with their files.

use crate::memory::Text;
use crate::{start_of, Entry, Result, Session};
use sigil_sys as sys;
use std::mem::size_of;
use std::os::raw::c_int;

/// Protection of a PKCS#12 file; every tool reads the first.
#[derive(Clone, Copy, Debug, Default, PartialEq, Eq)]
pub enum Protection {
    #[default]
    TripleDes = 0,
    Seed = 1,
    Aes256 = 2,
}

/// What the dialog lists; the default lists all.
#[derive(Clone, Debug, Default)]
pub struct Pick {
    /// OIDs, dotted; none for any.
    pub policies: Vec<String>,
    /// The whole subject.
    pub subject: Option<String>,
    /// The serial number, hexadecimal.
    pub serial: Option<String>,
    /// Families added up: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI; 0 for all.
    pub families: i32,
    /// Those with a key-management pair.
    pub with_km: bool,
    /// Without those that have expired.
    pub no_expired: bool,
    /// Those that have expired are shown, and cannot be chosen.
    pub lock_expired: bool,
}

impl Session {
    /// Lets the user choose a certificate in the dialog: its entry, unlocked; `None` when the user gave up. The entries of the
    /// list stay. 1606 without the dialogs, 1607 without a display.
    pub fn pick(&self, filter: &Pick) -> Result<Option<Entry<'_>>> {
        let policies = Some(filter.policies.join("|")).filter(|text| !text.is_empty());
        let texts = [&policies, &filter.subject, &filter.serial];
        let texts: Vec<Text> = texts.iter().map(|text| Text::optional(text.as_deref())).collect::<Result<_>>()?;
        let options = sys::SigilPickOptions {
            size: size_of::<sys::SigilPickOptions>(),
            policies: texts[0].pointer(),
            subject: texts[1].pointer(),
            serial: texts[2].pointer(),
            families: filter.families,
            with_km: filter.with_km.into(),
            no_expired: filter.no_expired.into(),
            lock_expired: filter.lock_expired.into(),
        };
        let mut number = 0;
        let code = unsafe { sys::sigil_pick(self.handle, &options, &mut number) };
        if code == sys::SIGIL_CANCELLED {
            return Ok(None);
        }
        self.check(code)?;
        Ok(Some(Entry { session: self, listing: self.listing.get(), number }))
    }

    /// Wipes the private keys of all entries.
    pub fn lock(&self) -> Result<()> {
        self.check(unsafe { sys::sigil_lock(self.handle, sys::SIGIL_ALL_ENTRIES) })
    }

    /// Brings the pairs of a PKCS#12 file into the home folder or a mounted disk's, where `list` finds them, under the password of
    /// the file. `replace`: those in the same place.
    pub fn import(&self, pkcs12: &[u8], password: &str, medium: Option<&str>, replace: bool) -> Result<()> {
        let (password, medium) = (Text::new(password)?, Text::optional(medium)?);
        self.check(unsafe {
            sys::sigil_import(self.handle, start_of(pkcs12), pkcs12.len(), password.pointer(), medium.pointer(),
                replace.into())
        })
    }
}

impl Entry<'_> {
    /// A PKCS#12 file with all unlocked pairs, under this password.
    pub fn export(&self, protection: Protection, password: &str) -> Result<Vec<u8>> {
        let password = Text::new(password)?;
        self.bytes(|session, number, pkcs12| unsafe {
            sys::sigil_export(session, number, protection as c_int, password.pointer(), pkcs12)
        })
    }

    /// Copies the files as they are to the home folder or to a mounted disk's. `replace`: those in the same place.
    pub fn copy(&self, medium: Option<&str>, replace: bool) -> Result<()> {
        let medium = Text::optional(medium)?;
        self.call(|session, number| unsafe { sys::sigil_copy(session, number, medium.pointer(), replace.into()) })
    }

    /// Deletes the files. The entry stays in the list, and its keys if it is unlocked.
    pub fn delete(&self) -> Result<()> {
        self.call(|session, number| unsafe { sys::sigil_delete(session, number) })
    }

    /// Puts all keys under a new password, in their files.
    pub fn change_password(&self, old_password: &str, new_password: &str) -> Result<()> {
        let (old, new) = (Text::new(old_password)?, Text::new(new_password)?);
        self.call(|session, number| unsafe {
            sys::sigil_change_password(session, number, old.pointer(), new.pointer())
        })
    }
}

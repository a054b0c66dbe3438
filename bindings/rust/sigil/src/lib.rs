// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! Korean PKI certificates: list or let the user pick, unlock, sign, verify, encrypt, decrypt, copy, judge, stamp.
//!
//! ```no_run
//! # fn main() -> Result<(), sigil::Error> {
//! let session = sigil::Session::open(&sigil::Options::default())?;
//! let entries = session.list(&sigil::Filter { valid: true, ..Default::default() })?;
//! entries[0].unlock("password")?;
//! let signed = entries[0].sign(b"content", sigil::Form::Attached)?;
//! # Ok(())
//! # }
//! ```
//!
//! A session may move to another thread but is used by one at a time. It ends when it is dropped, and no entry outlives it:
//!
//! ```compile_fail,E0505
//! # fn main() -> Result<(), sigil::Error> {
//! let session = sigil::Session::open(&sigil::Options::default())?;
//! let entries = session.list(&sigil::Filter::default())?;
//! drop(session);
//! entries[0].lock()?;
//! # Ok(())
//! # }
//! ```

mod error;
mod fields;
mod memory;
mod question;
mod store;

use sigil_sys as sys;
use std::cell::Cell;
use std::mem::size_of;
use std::os::raw::{c_int, c_void};
use std::ptr;
use std::time::SystemTime;

pub use error::{Error, Result};
pub use fields::Fields;
pub use memory::Secret;
pub use question::{Finding, Judge, Purpose, Stamp, Status, Token};
pub use store::{Pick, Protection};

use memory::{text_of, Bytes, Text};

/// The toolkit that does the cryptography.
#[derive(Clone, Copy, Debug, Default, PartialEq, Eq)]
pub enum Toolkit {
    #[default]
    Maker = 0,
    Gpki = 1,
}

/// Language of the names and messages that the library makes.
#[derive(Clone, Copy, Debug, Default, PartialEq, Eq)]
pub enum Language {
    Korean = 1,
    #[default]
    English = 2,
}

/// Which certificate and key of an entry.
#[derive(Clone, Copy, Debug, PartialEq, Eq)]
pub enum Pair {
    Signing = 0,
    KeyManagement = 1,
}

/// What a signature is: a message with its content, one without it, or the value alone.
#[derive(Clone, Copy, Debug, PartialEq, Eq)]
pub enum Form {
    Attached = 0,
    Detached = 1,
    Raw = 2,
}

/// The cipher of an encrypted message.
#[derive(Clone, Copy, Debug, Default, PartialEq, Eq)]
pub enum Cipher {
    #[default]
    Aes256 = 0,
    Aes192 = 1,
    Aes128 = 2,
    Aria256 = 3,
    Aria192 = 4,
    Aria128 = 5,
    Seed = 6,
    TripleDes = 7,
}

/// How a session begins.
#[derive(Clone, Debug, Default)]
pub struct Options {
    /// The library folder with toolkits and settings; `None` takes the installed one.
    pub folder: Option<String>,
    pub toolkit: Toolkit,
    pub language: Language,
}

/// Which certificates to list; the default lists all of the home folder.
#[derive(Clone, Debug, Default)]
pub struct Filter {
    /// A mounted disk's folder instead of the home folder.
    pub medium: Option<String>,
    /// A part of the issuer's name.
    pub issuer: Option<String>,
    /// The OID of a policy, dotted.
    pub policy: Option<String>,
    /// The whole subject.
    pub subject: Option<String>,
    /// The serial number, hexadecimal.
    pub serial: Option<String>,
    /// Families added up: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI; 0 for all.
    pub families: i32,
    /// Only those that end within so many days.
    pub expires_within: i32,
    /// Only those that are valid now.
    pub valid: bool,
    /// Only those that have expired.
    pub expired: bool,
}

/// Who signed a message that was verified.
#[derive(Clone, Debug)]
pub struct Signer {
    /// DER.
    pub certificate: Vec<u8>,
    pub fields: Fields,
    /// When the message says that it was signed.
    pub signing_time: Option<SystemTime>,
    /// The time of its time stamp.
    pub stamp_time: Option<SystemTime>,
    /// The result of verifying the time stamp; 0 also when there is none.
    pub stamp_code: i32,
}

/// A session of the library. Its keys are wiped when it is dropped.
pub struct Session {
    handle: *mut sys::SigilSession,
    language: Language,
    listing: Cell<u64>,
}

// The library ties a session to no thread; that only one is inside is the borrow checker's work, for Session is not Sync.
unsafe impl Send for Session {}

impl Session {
    pub fn open(options: &Options) -> Result<Session> {
        let folder = Text::optional(options.folder.as_deref())?;
        let raw = sys::SigilOpenOptions {
            size: size_of::<sys::SigilOpenOptions>(),
            folder: folder.pointer(),
            toolkit: options.toolkit as c_int,
            language: options.language as c_int,
        };
        let mut session = Session { handle: ptr::null_mut(), language: options.language, listing: Cell::new(0) };
        let code = unsafe { sys::sigil_open(&raw, &mut session.handle) };
        session.check(code)?;
        Ok(session)
    }

    /// The certificates of a store. Those listed before are locked, and answer 1001 from now on.
    pub fn list(&self, filter: &Filter) -> Result<Vec<Entry<'_>>> {
        let texts = [&filter.medium, &filter.issuer, &filter.policy, &filter.subject, &filter.serial];
        let texts: Vec<Text> = texts.iter().map(|text| Text::optional(text.as_deref())).collect::<Result<_>>()?;
        let options = sys::SigilListOptions {
            size: size_of::<sys::SigilListOptions>(),
            medium: texts[0].pointer(),
            issuer: texts[1].pointer(),
            policy: texts[2].pointer(),
            subject: texts[3].pointer(),
            serial: texts[4].pointer(),
            families: filter.families,
            expires_within: filter.expires_within,
            valid: filter.valid.into(),
            expired: filter.expired.into(),
        };
        let listing = self.listing.get() + 1;
        self.listing.set(listing);
        let mut count = 0;
        self.check(unsafe { sys::sigil_list(self.handle, &options, &mut count) })?;
        Ok((0..count).map(|number| Entry { session: self, listing, number }).collect())
    }

    /// Verifies a signed message, a detached one over the data: its content, and who signed it.
    pub fn verify(&self, message: &[u8], data: Option<&[u8]>) -> Result<(Vec<u8>, Vec<Signer>)> {
        let mut count = 0;
        let (start, size) = data.map_or((ptr::null(), 0), |data| (start_of(data), data.len()));
        let content = self.bytes(|session, content| unsafe {
            sys::sigil_verify(session, start_of(message), message.len(), start, size, content, &mut count)
        })?;
        let signers = (0..count).map(|index| self.signer(index)).collect::<Result<_>>()?;
        Ok((content, signers))
    }

    /// Verifies a signature value with a certificate.
    pub fn verify_raw(&self, certificate: &[u8], data: &[u8], signature: &[u8]) -> Result<()> {
        self.check(unsafe {
            sys::sigil_verify_raw(self.handle, start_of(certificate), certificate.len(), start_of(data), data.len(),
                start_of(signature), signature.len())
        })
    }

    /// Encrypts for the holders of these certificates (DER or PEM).
    pub fn encrypt(&self, cipher: Cipher, recipients: &[&[u8]], data: &[u8]) -> Result<Vec<u8>> {
        let recipients = borrowed(recipients);
        self.bytes(|session, message| unsafe {
            sys::sigil_encrypt(session, cipher as c_int, recipients.as_ptr(), recipients.len() as c_int, start_of(data),
                data.len(), message)
        })
    }

    /// What any certificate (DER or PEM) says.
    pub fn fields(&self, certificate: &[u8]) -> Result<Fields> {
        self.fields_by(|session, fields| unsafe {
            sys::sigil_certificate_fields(session, start_of(certificate), certificate.len(), fields)
        })
    }

    fn signer(&self, index: c_int) -> Result<Signer> {
        let mut raw: sys::SigilSigner = unsafe { std::mem::zeroed() };
        raw.size = size_of::<sys::SigilSigner>();
        self.check(unsafe { sys::sigil_signer(self.handle, index, &mut raw) })?;
        let certificate = unsafe { std::slice::from_raw_parts(raw.certificate, raw.certificate_size) }.to_vec();
        Ok(Signer {
            fields: self.fields(&certificate)?,
            certificate,
            signing_time: Some(raw.signing_time).filter(|time| *time != 0).map(fields::time_of),
            stamp_time: Some(raw.stamp_time).filter(|time| *time != 0).map(fields::time_of),
            stamp_code: raw.stamp_code,
        })
    }

    fn fields_by(&self, call: impl FnOnce(*mut sys::SigilSession, *mut sys::SigilFields) -> c_int) -> Result<Fields> {
        let mut raw: sys::SigilFields = unsafe { std::mem::zeroed() };
        raw.size = size_of::<sys::SigilFields>();
        self.check(call(self.handle, &mut raw))?;
        Ok(unsafe { Fields::from_raw(&raw) })
    }

    fn bytes(&self, call: impl FnOnce(*mut sys::SigilSession, *mut sys::SigilBytes) -> c_int) -> Result<Vec<u8>> {
        let mut bytes = Bytes::none();
        self.check(call(self.handle, &mut bytes.0))?;
        Ok(bytes.as_slice().to_vec())
    }

    fn check(&self, code: c_int) -> Result<()> {
        match code {
            0 => Ok(()),
            _ => Err(Error::new(code, self.language, unsafe { text_of(sys::sigil_error_text(self.handle)) })),
        }
    }
}

impl Drop for Session {
    fn drop(&mut self) {
        unsafe { sys::sigil_close(self.handle) }
    }
}

/// A certificate of a list, with its private key.
pub struct Entry<'s> {
    session: &'s Session,
    listing: u64,
    number: c_int,
}

impl Entry<'_> {
    /// What the certificate says.
    pub fn fields(&self) -> Result<Fields> {
        let number = self.current()?;
        self.session.fields_by(|session, fields| unsafe { sys::sigil_fields(session, number, fields) })
    }

    /// The certificate, DER.
    pub fn certificate(&self, pair: Pair) -> Result<Vec<u8>> {
        self.bytes(|session, number, bytes| unsafe { sys::sigil_certificate(session, number, pair as c_int, bytes) })
    }

    /// Opens the private keys; they stay in the session until it ends, locks them or lists anew.
    pub fn unlock(&self, password: &str) -> Result<()> {
        let password = Text::new(password)?;
        self.call(|session, number| unsafe { sys::sigil_unlock(session, number, password.pointer()) })
    }

    /// Wipes the private keys that `unlock` opened.
    pub fn lock(&self) -> Result<()> {
        self.call(|session, number| unsafe { sys::sigil_lock(session, number) })
    }

    /// The unlocked private key, PKCS#8, encrypted with a new password when one is given.
    pub fn private_key(&self, pair: Pair, new_password: Option<&str>) -> Result<Secret> {
        let password = Text::optional(new_password)?;
        let key = self.bytes(|session, number, key| unsafe {
            sys::sigil_private_key(session, number, pair as c_int, password.pointer(), key)
        })?;
        Ok(Secret::new(key))
    }

    /// Checks that the holder has this identity number: 1132 when not.
    pub fn identity(&self, number: &str) -> Result<()> {
        let text = Text::new(number)?;
        self.call(|session, number| unsafe { sys::sigil_identity(session, number, text.pointer()) })
    }

    /// Signs with the unlocked key.
    pub fn sign(&self, data: &[u8], form: Form) -> Result<Vec<u8>> {
        self.signed(data, form, &Text::optional(None)?)
    }

    /// The same, with the time stamp of this authority in the message.
    pub fn sign_stamped(&self, data: &[u8], form: Form, url: &str) -> Result<Vec<u8>> {
        self.signed(data, form, &Text::new(url)?)
    }

    fn signed(&self, data: &[u8], form: Form, stamp_url: &Text) -> Result<Vec<u8>> {
        let options = sys::SigilSignOptions {
            size: size_of::<sys::SigilSignOptions>(),
            form: form as c_int,
            stamp_url: stamp_url.pointer(),
        };
        self.bytes(|session, number, signature| unsafe {
            sys::sigil_sign(session, number, &options, start_of(data), data.len(), signature)
        })
    }

    /// Decrypts a message with the unlocked key.
    pub fn decrypt(&self, message: &[u8]) -> Result<Vec<u8>> {
        self.bytes(|session, number, content| unsafe {
            sys::sigil_decrypt(session, number, start_of(message), message.len(), content)
        })
    }

    /// The number in the session's list; an entry of a list that is not the last has none.
    fn current(&self) -> Result<c_int> {
        if self.listing == self.session.listing.get() {
            return Ok(self.number);
        }
        Err(Error::new(error::BAD_ARGUMENT, self.session.language, "the session has listed anew".to_string()))
    }

    fn call(&self, call: impl FnOnce(*mut sys::SigilSession, c_int) -> c_int) -> Result<()> {
        let number = self.current()?;
        self.session.check(call(self.session.handle, number))
    }

    fn bytes(
        &self, call: impl FnOnce(*mut sys::SigilSession, c_int, *mut sys::SigilBytes) -> c_int,
    ) -> Result<Vec<u8>> {
        let number = self.current()?;
        self.session.bytes(|session, bytes| call(session, number, bytes))
    }
}

/// The version of the library.
pub fn version() -> String {
    unsafe { text_of(sys::sigil_version()) }
}

/// Certificates as the library takes several.
fn borrowed(certificates: &[&[u8]]) -> Vec<sys::SigilBytes> {
    certificates.iter().map(|bytes| sys::SigilBytes { data: bytes.as_ptr() as *mut u8, size: bytes.len() }).collect()
}

fn start_of(bytes: &[u8]) -> *const c_void {
    bytes.as_ptr().cast()
}

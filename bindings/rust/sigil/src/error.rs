// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

use crate::memory::text_of;
use crate::Language;
use sigil_sys as sys;
use std::fmt;

pub type Result<T> = std::result::Result<T, Error>;

pub(crate) const BAD_ARGUMENT: i32 = 1001;

/// A function of the library failed.
#[derive(Clone, Debug)]
pub struct Error {
    /// One of enum SigilResult of the headers, or a toolkit's own.
    pub code: i32,
    /// Its name there, for example "SIGIL_WRONG_PASSWORD"; empty for a number without one.
    pub name: String,
    /// What happened, for a person.
    pub sentence: String,
    /// What that person can do.
    pub advice: String,
    /// What exactly went wrong; may be empty.
    pub detail: String,
}

impl Error {
    pub(crate) fn new(code: i32, language: Language, detail: String) -> Error {
        let mut text: sys::SigilCodeText = unsafe { std::mem::zeroed() };
        unsafe { sys::sigil_code_text(code, language as i32, &mut text) };
        let [name, sentence, advice] =
            [text.name, text.sentence, text.advice].map(|text| unsafe { text_of(text) });
        Error { code, name, sentence, advice, detail }
    }
}

impl fmt::Display for Error {
    fn fmt(&self, formatter: &mut fmt::Formatter<'_>) -> fmt::Result {
        write!(formatter, "{}: {} {}", self.code, self.sentence, self.advice)
    }
}

impl std::error::Error for Error {}

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! Texts and bytes between Rust and the library.

use crate::error::{Error, Result, BAD_ARGUMENT};
use crate::Language;
use sigil_sys as sys;
use std::ffi::CStr;
use std::ops::Deref;
use std::os::raw::c_char;
use std::ptr;

/// Bytes that are overwritten when they are dropped, such as a private key.
pub struct Secret(Vec<u8>);

impl Secret {
    pub(crate) fn new(bytes: Vec<u8>) -> Secret {
        Secret(bytes)
    }
}

impl Deref for Secret {
    type Target = [u8];

    fn deref(&self) -> &[u8] {
        &self.0
    }
}

impl Drop for Secret {
    fn drop(&mut self) {
        for byte in &mut self.0 {
            // Volatile: nobody reads it any more, which is when a compiler leaves a write out.
            unsafe { ptr::write_volatile(byte, 0) }
        }
    }
}

/// A text on its way into the library; it may be a password.
pub(crate) struct Text(Option<Secret>);

impl Text {
    pub(crate) fn optional(text: Option<&str>) -> Result<Text> {
        text.map_or(Ok(Text(None)), Text::new)
    }

    pub(crate) fn new(text: &str) -> Result<Text> {
        if text.contains('\0') {
            return Err(Error::new(BAD_ARGUMENT, Language::English, "the text holds a zero character".to_string()));
        }
        let mut bytes = Vec::with_capacity(text.len() + 1);
        bytes.extend_from_slice(text.as_bytes());
        bytes.push(0);
        Ok(Text(Some(Secret(bytes))))
    }

    pub(crate) fn pointer(&self) -> *const c_char {
        self.0.as_ref().map_or(ptr::null(), |text| text.as_ptr().cast())
    }
}

/// Bytes that the library handed out; wiped and given back at the end.
pub(crate) struct Bytes(pub(crate) sys::SigilBytes);

impl Bytes {
    pub(crate) fn none() -> Bytes {
        Bytes(sys::SigilBytes { data: ptr::null_mut(), size: 0 })
    }

    pub(crate) fn as_slice(&self) -> &[u8] {
        if self.0.data.is_null() {
            return &[];
        }
        unsafe { std::slice::from_raw_parts(self.0.data, self.0.size) }
    }
}

impl Drop for Bytes {
    fn drop(&mut self) {
        unsafe { sys::sigil_free(&mut self.0) }
    }
}

/// A text of the library, copied.
///
/// # Safety
/// The text is null, or ends with a zero byte.
pub(crate) unsafe fn text_of(text: *const c_char) -> String {
    if text.is_null() {
        return String::new();
    }
    CStr::from_ptr(text).to_string_lossy().into_owned()
}

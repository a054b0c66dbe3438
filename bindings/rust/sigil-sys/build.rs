// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! Tells the linker where libsigil.so is: in SIGIL_LIB_DIR, else where pkg-config says, else where it looks by itself.

use std::env;
use std::process::Command;

fn told_by_pkg_config() -> Option<String> {
    let answer = Command::new("pkg-config").args(["--variable=libdir", "sigil"]).output().ok()?;
    let folder = String::from_utf8(answer.stdout).ok()?.trim().to_string();
    Some(folder).filter(|folder| answer.status.success() && !folder.is_empty())
}

fn main() {
    println!("cargo:rerun-if-env-changed=SIGIL_LIB_DIR");
    println!("cargo:rustc-link-lib=dylib=sigil");
    if let Some(folder) = env::var("SIGIL_LIB_DIR").ok().or_else(told_by_pkg_config) {
        println!("cargo:rustc-link-search=native={folder}");
    }
}

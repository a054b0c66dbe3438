// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! Lists, unlocks, signs, verifies and decrypts: five_steps FOLDER_OF_A_DISK PASSWORD.

use sigil::{Cipher, Filter, Form, Options, Pair, Session};

fn main() -> Result<(), Box<dyn std::error::Error>> {
    let words: Vec<String> = std::env::args().collect();
    let session = Session::open(&Options::default())?;
    let entries = session.list(&Filter { medium: Some(words[1].clone()), valid: true, ..Default::default() })?;
    for fields in entries.iter().map(|entry| entry.fields()) {
        let fields = fields?;
        println!("{}: {} days left", fields.name, fields.days_left);
    }
    let mine = &entries[0];
    mine.unlock(&words[2])?;
    let signed = mine.sign("계약서".as_bytes(), Form::Attached)?;
    let (content, signers) = session.verify(&signed, None)?;
    println!("{}: signed by {}", String::from_utf8(content)?, signers[0].fields.name);
    let secret = session.encrypt(Cipher::Aes256, &[&mine.certificate(Pair::Signing)?], "비밀".as_bytes())?;
    println!("{}: decrypted", String::from_utf8(mine.decrypt(&secret)?)?);
    Ok(())
}

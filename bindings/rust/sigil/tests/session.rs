// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! The crate over a store whose names and password are Korean. Where it is, the environment says.

use sigil::{Cipher, Filter, Form, Language, Options, Pair, Session, Toolkit};
use std::env;
use std::time::SystemTime;

fn told(name: &str) -> String {
    env::var(name).unwrap_or_else(|_| panic!("{name} is not set"))
}

fn open(language: Language) -> Session {
    Session::open(&Options { folder: Some(told("SIGIL_TEST_FOLDER")), toolkit: Toolkit::Maker, language }).unwrap()
}

fn store() -> Filter {
    Filter { medium: Some(told("SIGIL_TEST_STORE")), ..Default::default() }
}

#[test]
fn a_korean_name_comes_out_as_it_is() {
    let session = open(Language::English);
    let fields = session.list(&store()).unwrap()[0].fields().unwrap();
    assert_eq!(fields.name, told("SIGIL_TEST_NAME"));
    assert_eq!((fields.family, fields.has_key, fields.unlocked, fields.expired), (2, true, false, false));
    assert!(fields.valid_from < SystemTime::now() && SystemTime::now() < fields.valid_to);
    assert!(fields.certificate_file.ends_with("signCert.der") && fields.key_file.ends_with("signPri.key"));
}

#[test]
fn a_filter_reaches_the_library() {
    let session = open(Language::English);
    assert!(!session.list(&store()).unwrap().is_empty());
    let strangers = session.list(&Filter { issuer: Some("없는기관".to_string()), ..store() });
    assert!(strangers.map_or_else(|error| error.code == 1115, |entries| entries.is_empty()));
}

#[test]
fn a_wrong_password_has_its_code_and_words() {
    for (language, word) in [(Language::English, "password"), (Language::Korean, "비밀번호")] {
        let session = open(language);
        let error = session.list(&store()).unwrap()[0].unlock("틀린 비밀번호").unwrap_err();
        assert_eq!((error.code, error.name.as_str()), (1113, "SIGIL_WRONG_PASSWORD"));
        assert!(error.sentence.contains(word), "{error}");
        assert!(!error.advice.is_empty());
    }
}

#[test]
fn a_detached_signature_covers_its_data_alone() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    entry.unlock(&told("SIGIL_TEST_PASSWORD")).unwrap();
    let signed = entry.sign("계약서".as_bytes(), Form::Detached).unwrap();
    let (_, signers) = session.verify(&signed, Some("계약서".as_bytes())).unwrap();
    assert_eq!(signers[0].fields.name, told("SIGIL_TEST_NAME"));
    assert_eq!(signers[0].certificate, entry.certificate(Pair::Signing).unwrap());
    assert!(session.verify(&signed, Some("다른 글".as_bytes())).is_err());
}

#[test]
fn a_signature_value_verifies() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    entry.unlock(&told("SIGIL_TEST_PASSWORD")).unwrap();
    let value = entry.sign(b"data", Form::Raw).unwrap();
    let certificate = entry.certificate(Pair::Signing).unwrap();
    session.verify_raw(&certificate, b"data", &value).unwrap();
    assert!(session.verify_raw(&certificate, b"date", &value).is_err());
}

#[test]
fn a_locked_entry_decrypts_nothing() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    let message = session.encrypt(Cipher::Seed, &[&entry.certificate(Pair::Signing).unwrap()], b"data").unwrap();
    entry.unlock(&told("SIGIL_TEST_PASSWORD")).unwrap();
    assert_eq!(entry.decrypt(&message).unwrap(), b"data");
    assert!(!entry.private_key(Pair::Signing, None).unwrap().is_empty());
    entry.lock().unwrap();
    assert!(entry.decrypt(&message).is_err());
}

#[test]
fn an_entry_of_an_older_list_is_refused() {
    let session = open(Language::English);
    let older = session.list(&store()).unwrap();
    let newer = session.list(&store()).unwrap();
    assert_eq!(older[0].fields().unwrap_err().code, 1001);
    assert!(newer[0].fields().is_ok());
}

#[test]
fn a_zero_character_cuts_no_text_short() {
    let session = open(Language::English);
    let password = format!("{}\0", told("SIGIL_TEST_PASSWORD"));
    assert_eq!(session.list(&store()).unwrap()[0].unlock(&password).unwrap_err().code, 1001);
}

#[test]
fn a_folder_without_a_library_is_no_session() {
    let nowhere = Options { folder: Some("/no/such/folder".to_string()), ..Default::default() };
    let error = Session::open(&nowhere).err().expect("a session of nothing");
    assert_ne!(error.code, 0);
    assert!(!error.sentence.is_empty());
}

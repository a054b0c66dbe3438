// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

//! The crate over a store whose names and password are Korean. Where it is, the environment says.

use sigil::{Cipher, Filter, Form, Judge, Language, Options, Pair, Pick, Protection, Purpose, Session, Toolkit};
use std::env;
use std::fs;
use std::path::{Path, PathBuf};
use std::time::{Duration, SystemTime};

fn told(name: &str) -> String {
    env::var(name).unwrap_or_else(|_| panic!("{name} is not set"))
}

fn open(language: Language) -> Session {
    Session::open(&Options { folder: Some(told("SIGIL_TEST_FOLDER")), toolkit: Toolkit::Maker, language }).unwrap()
}

fn store() -> Filter {
    Filter { medium: Some(told("SIGIL_TEST_STORE")), ..Default::default() }
}

/// A disk of a test's own, which goes away with it.
struct Disk(PathBuf);

impl Disk {
    fn new(name: &str) -> Disk {
        let folder = env::temp_dir().join(format!("sigil-{}-{name}", std::process::id()));
        fs::create_dir(&folder).unwrap();
        Disk(folder)
    }

    fn text(&self) -> &str {
        self.0.to_str().unwrap()
    }

    fn filter(&self) -> Filter {
        Filter { medium: Some(self.text().to_string()), ..Default::default() }
    }
}

impl Drop for Disk {
    fn drop(&mut self) {
        fs::remove_dir_all(&self.0).unwrap()
    }
}

/// The code of a step that fails.
fn code<T>(result: sigil::Result<T>) -> i32 {
    result.err().expect("nothing was refused").code
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
fn what_is_copied_is_another_s_until_it_is_deleted() {
    let (session, disk) = (open(Language::English), Disk::new("copy"));
    let entry = &session.list(&store()).unwrap()[0];
    entry.copy(Some(disk.text()), false).unwrap();
    assert_eq!(code(entry.copy(Some(disk.text()), false)), 1602);
    entry.copy(Some(disk.text()), true).unwrap();
    let copied = &session.list(&disk.filter()).unwrap()[0];
    let fields = copied.fields().unwrap();
    assert_eq!(fields.name, told("SIGIL_TEST_NAME"));
    assert!(Path::new(&fields.certificate_file).exists());
    copied.delete().unwrap();
    assert!(!Path::new(&fields.certificate_file).exists());
    assert!(session.list(&disk.filter()).unwrap().is_empty());
}

#[test]
fn pairs_go_out_and_in_under_another_password() {
    let (session, disk) = (open(Language::English), Disk::new("import"));
    let (password, other) = (told("SIGIL_TEST_PASSWORD"), "또 다른 5678?");
    let entry = &session.list(&store()).unwrap()[0];
    assert_eq!(code(entry.export(Protection::Aes256, other)), 1601);
    entry.unlock(&password).unwrap();
    let pkcs12 = entry.export(Protection::Aes256, other).unwrap();
    assert_eq!(code(session.import(&pkcs12, &password, Some(disk.text()), false)), 1113);
    session.import(&pkcs12, other, Some(disk.text()), false).unwrap();
    let brought = &session.list(&disk.filter()).unwrap()[0];
    assert_eq!(code(brought.unlock(&password)), 1113);
    brought.unlock(other).unwrap();
}

#[test]
fn a_changed_password_opens() {
    let (session, disk) = (open(Language::English), Disk::new("password"));
    let (password, other) = (told("SIGIL_TEST_PASSWORD"), "새 비밀번호 9!");
    session.list(&store()).unwrap()[0].copy(Some(disk.text()), false).unwrap();
    let copied = &session.list(&disk.filter()).unwrap()[0];
    assert_eq!(code(copied.change_password(other, other)), 1113);
    copied.change_password(&password, other).unwrap();
    assert_eq!(code(copied.unlock(&password)), 1113);
    copied.unlock(other).unwrap();
    session.lock().unwrap();
    assert!(!copied.fields().unwrap().unlocked);
}

#[test]
fn the_holder_s_identity_number_is_told_from_another() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    entry.unlock(&told("SIGIL_TEST_PASSWORD")).unwrap();
    entry.identity(&told("SIGIL_TEST_IDENTITY")).unwrap();
    assert_eq!(code(entry.identity("0000000000000")), 1132);
}

#[test]
fn a_certificate_is_valid_under_its_authorities() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    let certificate = entry.certificate(Pair::Signing).unwrap();
    let authorities: Vec<Vec<u8>> = fs::read_dir(Path::new(&told("SIGIL_TEST_STORE")).join("ca")).unwrap()
        .map(|file| file.unwrap().path()).filter(|path| path.extension().map_or(false, |ending| ending == "der"))
        .map(|path| fs::read(path).unwrap()).collect();
    let trusted: Vec<&[u8]> = authorities.iter().map(Vec::as_slice).collect();
    let judge = Judge { trusted: &trusted, purpose: Purpose::Sign, no_revocation: true, ..Default::default() };
    session.verify_certificate(&certificate, &judge).unwrap();
    let later = entry.fields().unwrap().valid_to + Duration::from_secs(86400);
    assert_eq!(code(session.verify_certificate(&certificate, &Judge { time: Some(later), ..judge })), 3202);
    assert_eq!(code(session.status(&certificate, &trusted, Some("http://127.0.0.1:1/"))), 1605);
}

#[test]
fn a_stamp_is_of_an_authority_that_can_be_reached() {
    let session = open(Language::English);
    assert!([3600, 3601, 3602].contains(&code(session.timestamp("http://127.0.0.1:1/", b"data"))));
    assert_ne!(code(session.stamp(b"no token", b"data")), 0);
    let entry = &session.list(&store()).unwrap()[0];
    entry.unlock(&told("SIGIL_TEST_PASSWORD")).unwrap();
    assert!([3600, 3601, 3602].contains(&code(entry.sign_stamped(b"data", Form::Attached, "http://127.0.0.1:1/"))));
}

#[test]
fn findings_say_why_something_is_listed() {
    let session = open(Language::English);
    let file = session.list(&store()).unwrap()[0].fields().unwrap().certificate_file;
    let findings = session.examine(Some(&told("SIGIL_TEST_STORE"))).unwrap();
    assert!(findings.iter().any(|finding| finding.listed && file.starts_with(&finding.path)), "{findings:?}");
    assert!(findings.iter().all(|finding| !finding.rule.is_empty() && !finding.detail.is_empty()));
}

#[test]
fn a_token_is_told_with_its_certificate() {
    let session = open(Language::English);
    let tokens = session.tokens().unwrap();
    let token = tokens.iter().find(|token| token.label == told("SIGIL_TEST_TOKEN")).expect("the token");
    assert!(token.initialised && !token.maker.is_empty());
    assert_eq!(token.certificates, [session.list(&store()).unwrap()[0].certificate(Pair::Signing).unwrap()]);
}

#[test]
fn nobody_picks_without_a_display() {
    let session = open(Language::English);
    let entry = &session.list(&store()).unwrap()[0];
    assert_eq!(session.pick(&Pick::default()).err().expect("no display").code, 1607);
    assert!(entry.fields().is_ok());
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

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The module over a store whose names and password are Korean. Where it is, the environment says.

'use strict';

const assert = require('node:assert');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { Cipher, Form, Language, Protection, Purpose, Session, SigilError, version } = require('./index.js');

const {
  SIGIL_TEST_FOLDER: folder, SIGIL_TEST_STORE: medium, SIGIL_TEST_PASSWORD: password, SIGIL_TEST_NAME: name,
  SIGIL_TEST_IDENTITY: identity, SIGIL_TEST_TOKEN: tokenLabel,
} = process.env;
const contract = Buffer.from('계약서');
const other = Buffer.from('다른 글');

function withEntry(step, language = Language.ENGLISH) {
  const session = new Session({ folder, language });
  try {
    step(session.list({ medium })[0], session);
  } finally {
    session.close();
  }
}

/** The step fails with this code. */
function refused(code, step) {
  assert.throws(step, (failure) => failure instanceof SigilError && failure.code === code);
}

/** The code that the step fails with. */
function codeOf(step) {
  try {
    step();
  } catch (failure) {
    return failure.code;
  }
  return assert.fail('nothing was refused');
}

/** With a disk of its own, which goes away. */
function withDisk(step) {
  const disk = fs.mkdtempSync(path.join(os.tmpdir(), 'sigil-'));
  try {
    withEntry((entry, session) => step(entry, session, disk));
  } finally {
    fs.rmSync(disk, { recursive: true });
  }
}

const nowhere = 'http://127.0.0.1:1/';

const tests = {
  'a Korean name comes out as it is': () => withEntry(({ fields }) => {
    assert.strictEqual(fields.name, name);
    assert.deepStrictEqual([fields.family, fields.hasKey, fields.unlocked, fields.expired], [2, true, false, false]);
    assert.ok(fields.validFrom < new Date() && new Date() < fields.validTo);
    assert.match(fields.certificateFile, /signCert\.der$/);
    assert.match(fields.keyFile, /signPri\.key$/);
  }),
  'a wrong password has its code and words': () => {
    for (const [language, word] of [[Language.ENGLISH, 'password'], [Language.KOREAN, '비밀번호']]) {
      withEntry((entry) => assert.throws(() => entry.unlock('틀린 비밀번호'), (failure) => {
        assert.deepStrictEqual([failure.code, failure.codeName], [1113, 'SIGIL_WRONG_PASSWORD']);
        assert.ok(failure.sentence.includes(word) && failure.advice.length > 0, failure.message);
        return true;
      }), language);
    }
  },
  'a detached signature covers its data alone': () => withEntry((entry, session) => {
    entry.unlock(password);
    const signed = entry.sign(contract, Form.DETACHED);
    const { signers } = session.verify(signed, contract);
    assert.strictEqual(signers[0].fields.name, name);
    assert.deepStrictEqual(signers[0].certificate, entry.certificate());
    assert.throws(() => session.verify(signed, other), SigilError);
  }),
  'a signature value verifies': () => withEntry((entry, session) => {
    entry.unlock(password);
    const value = entry.sign(contract, Form.RAW);
    session.verifyRaw(entry.certificate(), contract, value);
    assert.throws(() => session.verifyRaw(entry.certificate(), other, value), SigilError);
  }),
  'a locked entry decrypts nothing': () => withEntry((entry, session) => {
    const message = session.encrypt([entry.certificate()], contract, Cipher.SEED);
    entry.unlock(password);
    assert.deepStrictEqual(entry.decrypt(message), contract);
    assert.ok(entry.privateKey().length > 0);
    entry.lock();
    assert.throws(() => entry.decrypt(message), SigilError);
  }),
  'what is copied is another\'s until it is deleted': () => withDisk((entry, session, disk) => {
    entry.copy(disk);
    refused(1602, () => entry.copy(disk));
    entry.copy(disk, { replace: true });
    const copied = session.list({ medium: disk })[0];
    const { certificateFile } = copied.fields;
    assert.ok(copied.fields.name === name && fs.existsSync(certificateFile));
    copied.delete();
    assert.ok(!fs.existsSync(certificateFile));
    assert.deepStrictEqual(session.list({ medium: disk }), []);
  }),
  'pairs go out and in under another password': () => withDisk((entry, session, disk) => {
    refused(1601, () => entry.export('또 다른 5678?'));
    entry.unlock(password);
    const pkcs12 = entry.export('또 다른 5678?', Protection.AES256);
    refused(1113, () => session.importPairs(pkcs12, password, disk));
    session.importPairs(pkcs12, '또 다른 5678?', disk);
    const brought = session.list({ medium: disk })[0];
    refused(1113, () => brought.unlock(password));
    brought.unlock('또 다른 5678?');
  }),
  'a changed password opens': () => withDisk((entry, session, disk) => {
    entry.copy(disk);
    const copied = session.list({ medium: disk })[0];
    refused(1113, () => copied.changePassword('틀린 비밀번호', '새 비밀번호 9!'));
    copied.changePassword(password, '새 비밀번호 9!');
    refused(1113, () => copied.unlock(password));
    copied.unlock('새 비밀번호 9!');
    session.lock();
    assert.ok(!copied.fields.unlocked);
  }),
  'the holder\'s identity number is told from another': () => withEntry((entry) => {
    entry.unlock(password);
    entry.identity(identity);
    refused(1132, () => entry.identity('0000000000000'));
  }),
  'a certificate is valid under its authorities': () => withEntry((entry, session) => {
    const certificate = entry.certificate();
    const ca = path.join(medium, 'ca');
    const trusted = fs.readdirSync(ca).filter((file) => file.endsWith('.der')).map((file) => fs.readFileSync(path.join(ca, file)));
    const judge = { trusted, purpose: Purpose.SIGN, revocation: false };
    session.verifyCertificate(certificate, judge);
    const time = new Date(entry.fields.validTo.getTime() + 86400000);
    refused(3202, () => session.verifyCertificate(certificate, { ...judge, time }));
    refused(1605, () => session.status(certificate, { trusted, responder: nowhere }));
  }),
  'a stamp is of an authority that can be reached': () => withEntry((entry, session) => {
    entry.unlock(password);
    assert.ok([3600, 3601, 3602].includes(codeOf(() => session.timestamp(nowhere, contract))));
    assert.ok([3600, 3601, 3602].includes(codeOf(() => entry.sign(contract, Form.ATTACHED, nowhere))));
    assert.throws(() => session.stamp(other, contract), SigilError);
  }),
  'findings say why something is listed': () => withEntry((entry, session) => {
    const findings = session.examine(medium);
    assert.ok(findings.some((finding) => finding.listed && entry.fields.certificateFile.startsWith(finding.path)));
    assert.ok(findings.every(({ rule, detail }) => rule && detail));
  }),
  'a token is told with its certificate': () => withEntry((entry, session) => {
    const token = session.tokens().find(({ label }) => label === tokenLabel);
    assert.ok(token.initialised && token.maker.length > 0);
    assert.deepStrictEqual(token.certificates, [entry.certificate()]);
  }),
  'nobody picks without a display': () => withEntry((entry, session) => {
    refused(1607, () => session.pick({ noExpired: true }));
    assert.strictEqual(entry.fields.name, name);
  }),
  'a closed session is refused': () => {
    const session = new Session({ folder });
    const entry = session.list({ medium })[0];
    session.close();
    session.close();
    refused(1008, () => entry.fields);
    refused(1008, () => entry.unlock(password));
    refused(1008, () => entry.sign(contract));
    refused(1008, () => session.list({ medium }));
    refused(1008, () => session.verify(contract));
  },
  'an entry of an older list is refused': () => withEntry((older, session) => {
    const newer = session.list({ medium })[0];
    refused(1001, () => older.fields);
    assert.strictEqual(newer.fields.name, name);
  }),
  'what is no text or no bytes is refused': () => withEntry((entry, session) => {
    assert.throws(() => entry.unlock(`${password}\0`), /zero character/);
    assert.throws(() => entry.unlock(7), TypeError);
    assert.throws(() => session.verify('text'), TypeError);
    assert.throws(() => session.encrypt([7], contract), TypeError);
    assert.throws(() => session.encrypt(null, contract), TypeError);
  }),
  'a folder without a library is no session': () => {
    assert.throws(() => new Session({ folder: '/no/such/folder' }), (failure) => failure.sentence.length > 0);
  },
  'the version is told': () => assert.match(version(), /^\d+\.\d+\.\d+$/),
};

for (const [title, test] of Object.entries(tests)) {
  test();
  console.log(`passed: ${title}`);
}

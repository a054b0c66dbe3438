// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.List;
import sigildesk.*;

/** The package over a store whose names and password are Korean. Where it is, the environment says. */
public final class SessionTest {
    private interface Step {
        void run();
    }

    private static final String PASSWORD = System.getenv("SIGIL_TEST_PASSWORD");
    private static final String NAME = System.getenv("SIGIL_TEST_NAME");
    private static final byte[] CONTRACT = "계약서".getBytes(StandardCharsets.UTF_8);
    private static final byte[] OTHER = "다른 글".getBytes(StandardCharsets.UTF_8);

    private static void expect(boolean condition, String what) {
        if (!condition)
            throw new AssertionError(what);
    }

    /** The failure of the step; its code is the one expected. */
    private static SigilException refused(int code, Step step) {
        SigilException failure = anyRefused(step);
        expect(failure.code() == code, failure.getMessage());
        return failure;
    }

    private static SigilException anyRefused(Step step) {
        try {
            step.run();
        } catch (SigilException failure) {
            return failure;
        }
        throw new AssertionError("nothing was refused");
    }

    private static Session open(Language language) {
        return new Session(System.getenv("SIGIL_TEST_FOLDER"), Toolkit.MAKER, language);
    }

    private static Filter store() {
        return new Filter().medium(System.getenv("SIGIL_TEST_STORE"));
    }

    private static void aKoreanNameComesOutAsItIs() {
        try (Session session = open(Language.ENGLISH)) {
            Fields fields = session.list(store()).get(0).fields();
            expect(fields.name().equals(NAME), fields.name());
            expect(fields.family() == 2 && fields.hasKey() && !fields.unlocked() && !fields.expired(), fields.toString());
            expect(fields.validFrom().isBefore(fields.validTo()), fields.toString());
            expect(fields.certificateFile().endsWith("signCert.der"), fields.certificateFile());
            expect(fields.keyFile().endsWith("signPri.key"), fields.keyFile());
        }
    }

    private static void aWrongPasswordHasItsCodeAndWords() {
        for (Language language : Language.values()) {
            try (Session session = open(language)) {
                Entry entry = session.list(store()).get(0);
                SigilException failure = refused(1113, () -> entry.unlock("틀린 비밀번호"));
                expect(failure.name().equals("SIGIL_WRONG_PASSWORD"), failure.name());
                expect(failure.sentence().contains(language == Language.KOREAN ? "비밀번호" : "password"), failure.sentence());
                expect(!failure.advice().isEmpty(), "advice");
            }
        }
    }

    private static void aDetachedSignatureCoversItsDataAlone() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            entry.unlock(PASSWORD);
            byte[] signed = entry.sign(CONTRACT, Form.DETACHED);
            List<Signer> signers = session.verify(signed, CONTRACT).signers();
            expect(signers.get(0).fields().name().equals(NAME), signers.get(0).fields().name());
            expect(Arrays.equals(signers.get(0).certificate(), entry.certificate(Pair.SIGNING)), "the signer's certificate");
            anyRefused(() -> session.verify(signed, OTHER));
        }
    }

    private static void aSignatureValueVerifies() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            entry.unlock(PASSWORD);
            byte[] value = entry.sign(CONTRACT, Form.RAW);
            session.verifyRaw(entry.certificate(Pair.SIGNING), CONTRACT, value);
            anyRefused(() -> session.verifyRaw(entry.certificate(Pair.SIGNING), OTHER, value));
        }
    }

    private static void aLockedEntryDecryptsNothing() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            byte[] message = session.encrypt(Cipher.SEED, CONTRACT, entry.certificate(Pair.SIGNING));
            entry.unlock(PASSWORD);
            expect(Arrays.equals(entry.decrypt(message), CONTRACT), "decrypted");
            expect(entry.privateKey(Pair.SIGNING, null).length > 0, "private key");
            entry.lock();
            anyRefused(() -> entry.decrypt(message));
        }
    }

    private static void aClosedSessionIsRefused() {
        Session session = open(Language.ENGLISH);
        Entry entry = session.list(store()).get(0);
        session.close();
        session.close();
        refused(1008, entry::fields);
        refused(1008, () -> entry.unlock(PASSWORD));
        refused(1008, () -> entry.sign(CONTRACT, Form.ATTACHED));
        refused(1008, () -> session.list(store()));
        refused(1008, () -> session.verify(CONTRACT));
    }

    private static void anEntryOfAnOlderListIsRefused() {
        try (Session session = open(Language.ENGLISH)) {
            Entry older = session.list(store()).get(0);
            Entry newer = session.list(store()).get(0);
            refused(1001, older::fields);
            expect(newer.fields().name().equals(NAME), "the newer entry");
        }
    }

    private static void aZeroCharacterCutsNoTextShort() {
        try (Session session = open(Language.ENGLISH)) {
            session.list(store()).get(0).unlock(PASSWORD + '\0');
            throw new AssertionError("unlocked");
        } catch (IllegalArgumentException expected) {
            expect(expected.getMessage().contains("zero"), expected.getMessage());
        }
    }

    private static void aFolderWithoutALibraryIsNoSession() {
        SigilException failure = anyRefused(() -> new Session("/no/such/folder", Toolkit.MAKER, Language.ENGLISH));
        expect(!failure.sentence().isEmpty(), "sentence");
    }

    public static void main(String[] words) {
        Step[] steps = {SessionTest::aKoreanNameComesOutAsItIs, SessionTest::aWrongPasswordHasItsCodeAndWords,
            SessionTest::aDetachedSignatureCoversItsDataAlone, SessionTest::aSignatureValueVerifies,
            SessionTest::aLockedEntryDecryptsNothing, SessionTest::aClosedSessionIsRefused,
            SessionTest::anEntryOfAnOlderListIsRefused, SessionTest::aZeroCharacterCutsNoTextShort,
            SessionTest::aFolderWithoutALibraryIsNoSession};
        for (Step step : steps)
            step.run();
        System.out.println(steps.length + " steps passed");
    }
}

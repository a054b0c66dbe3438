// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

import java.io.File;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.DirectoryStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.stream.Stream;
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

    /** What is done with a disk of its own, which goes away. */
    private interface OnDisk {
        void run(String disk) throws IOException;
    }

    private static void withDisk(OnDisk step) {
        try {
            Path disk = Files.createTempDirectory("sigil");
            try {
                step.run(disk.toString());
            } finally {
                try (Stream<Path> files = Files.walk(disk)) {
                    files.sorted(Comparator.reverseOrder()).map(Path::toFile).forEach(File::delete);
                }
            }
        } catch (IOException failure) {
            throw new UncheckedIOException(failure);
        }
    }

    private static void whatIsCopiedIsAnothersUntilItIsDeleted() {
        withDisk(disk -> {
            try (Session session = open(Language.ENGLISH)) {
                Entry entry = session.list(store()).get(0);
                entry.copy(disk, false);
                refused(1602, () -> entry.copy(disk, false));
                entry.copy(disk, true);
                Entry copied = session.list(new Filter().medium(disk)).get(0);
                Path file = Path.of(copied.fields().certificateFile());
                expect(copied.fields().name().equals(NAME) && Files.exists(file), file.toString());
                copied.delete();
                expect(!Files.exists(file), file.toString());
                expect(session.list(new Filter().medium(disk)).isEmpty(), "the list after the deletion");
            }
        });
    }

    private static void pairsGoOutAndInUnderAnotherPassword() {
        withDisk(disk -> {
            try (Session session = open(Language.ENGLISH)) {
                Entry entry = session.list(store()).get(0);
                refused(1601, () -> entry.export(Protection.AES256, "또 다른 5678?"));
                entry.unlock(PASSWORD);
                byte[] pkcs12 = entry.export(Protection.AES256, "또 다른 5678?");
                refused(1113, () -> session.importPairs(pkcs12, PASSWORD, disk, false));
                session.importPairs(pkcs12, "또 다른 5678?", disk, false);
                Entry brought = session.list(new Filter().medium(disk)).get(0);
                refused(1113, () -> brought.unlock(PASSWORD));
                brought.unlock("또 다른 5678?");
            }
        });
    }

    private static void aChangedPasswordOpens() {
        withDisk(disk -> {
            try (Session session = open(Language.ENGLISH)) {
                session.list(store()).get(0).copy(disk, false);
                Entry copied = session.list(new Filter().medium(disk)).get(0);
                refused(1113, () -> copied.changePassword("틀린 비밀번호", "새 비밀번호 9!"));
                copied.changePassword(PASSWORD, "새 비밀번호 9!");
                refused(1113, () -> copied.unlock(PASSWORD));
                copied.unlock("새 비밀번호 9!");
                session.lock();
                expect(!copied.fields().unlocked(), "locked");
            }
        });
    }

    private static void theHoldersIdentityNumberIsToldFromAnother() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            entry.unlock(PASSWORD);
            entry.identity(System.getenv("SIGIL_TEST_IDENTITY"));
            refused(1132, () -> entry.identity("0000000000000"));
        }
    }

    private static byte[][] authorities() throws IOException {
        List<byte[]> found = new ArrayList<>();
        Path folder = Path.of(System.getenv("SIGIL_TEST_STORE"), "ca");
        try (DirectoryStream<Path> files = Files.newDirectoryStream(folder, "*.der")) {
            for (Path file : files)
                found.add(Files.readAllBytes(file));
        }
        return found.toArray(new byte[0][]);
    }

    private static void aCertificateIsValidUnderItsAuthorities() {
        withDisk(disk -> {
            try (Session session = open(Language.ENGLISH)) {
                Entry entry = session.list(store()).get(0);
                byte[] certificate = entry.certificate(Pair.SIGNING);
                Judge judge = new Judge().trusted(authorities()).purpose(Purpose.SIGN).noRevocation();
                session.verifyCertificate(certificate, judge);
                judge.time(entry.fields().validTo().plusSeconds(86400));
                refused(3202, () -> session.verifyCertificate(certificate, judge));
                refused(1605, () -> session.status(certificate, judge.responder("http://127.0.0.1:1/")));
            }
        });
    }

    private static void aStampIsOfAnAuthorityThatCanBeReached() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            entry.unlock(PASSWORD);
            List<Integer> unreachable = List.of(3600, 3601, 3602);
            String nowhere = "http://127.0.0.1:1/";
            expect(unreachable.contains(anyRefused(() -> session.timestamp(nowhere, CONTRACT)).code()), "token");
            expect(unreachable.contains(anyRefused(() -> entry.sign(CONTRACT, Form.ATTACHED, nowhere)).code()), "message");
            anyRefused(() -> session.stamp(OTHER, CONTRACT));
        }
    }

    private static void findingsSayWhySomethingIsListed() {
        try (Session session = open(Language.ENGLISH)) {
            String file = session.list(store()).get(0).fields().certificateFile();
            List<Finding> findings = session.examine(System.getenv("SIGIL_TEST_STORE"));
            expect(findings.stream().anyMatch(finding -> finding.listed() && file.startsWith(finding.path())), file);
            expect(findings.stream().noneMatch(finding -> finding.rule().isEmpty() || finding.detail().isEmpty()), "words");
        }
    }

    private static void aTokenIsToldWithItsCertificate() {
        try (Session session = open(Language.ENGLISH)) {
            String label = System.getenv("SIGIL_TEST_TOKEN");
            Token token = session.tokens().stream().filter(each -> each.label().equals(label)).findFirst().orElseThrow();
            expect(token.initialised() && !token.maker().isEmpty(), token.toString());
            byte[] certificate = session.list(store()).get(0).certificate(Pair.SIGNING);
            expect(token.certificates().size() == 1 && Arrays.equals(token.certificates().get(0), certificate), label);
        }
    }

    private static void nobodyPicksWithoutADisplay() {
        try (Session session = open(Language.ENGLISH)) {
            Entry entry = session.list(store()).get(0);
            refused(1607, () -> session.pick(new PickFilter().noExpired()));
            expect(entry.fields().name().equals(NAME), "the list stays");
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
            SessionTest::aFolderWithoutALibraryIsNoSession, SessionTest::whatIsCopiedIsAnothersUntilItIsDeleted,
            SessionTest::pairsGoOutAndInUnderAnotherPassword, SessionTest::aChangedPasswordOpens,
            SessionTest::theHoldersIdentityNumberIsToldFromAnother, SessionTest::aCertificateIsValidUnderItsAuthorities,
            SessionTest::aStampIsOfAnAuthorityThatCanBeReached, SessionTest::findingsSayWhySomethingIsListed,
            SessionTest::aTokenIsToldWithItsCertificate, SessionTest::nobodyPicksWithoutADisplay};
        for (Step step : steps)
            step.run();
        System.out.println(steps.length + " steps passed");
    }
}

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

import java.nio.charset.StandardCharsets;
import sigildesk.*;

/** Lists, unlocks, signs, verifies and decrypts: FiveSteps FOLDER_OF_A_DISK PASSWORD. */
public final class FiveSteps {
    public static void main(String[] words) {
        try (Session session = new Session()) {
            var entries = session.list(new Filter().medium(words[0]).valid());
            for (Entry entry : entries)
                System.out.println(entry.fields().name() + ": " + entry.fields().daysLeft() + " days left");
            Entry mine = entries.get(0);
            mine.unlock(words[1]);
            byte[] signed = mine.sign("계약서".getBytes(StandardCharsets.UTF_8), Form.ATTACHED);
            Verified verified = session.verify(signed);
            String content = new String(verified.content(), StandardCharsets.UTF_8);
            System.out.println(content + ": signed by " + verified.signers().get(0).fields().name());
            byte[] secret = session.encrypt(
                Cipher.AES256, "비밀".getBytes(StandardCharsets.UTF_8), mine.certificate(Pair.SIGNING));
            System.out.println(new String(mine.decrypt(secret), StandardCharsets.UTF_8) + ": decrypted");
        }
    }
}

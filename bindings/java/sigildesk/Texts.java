// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Memory;
import com.sun.jna.Pointer;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;

/** Texts and bytes between Java and the library. */
final class Texts {
    private Texts() {
    }

    /** A text for the library; null for null. Whoever made it closes it, which overwrites it: it may be a password. */
    static final class In implements AutoCloseable {
        final Memory memory;

        In(String text) {
            if (text != null && text.indexOf('\0') >= 0)
                throw new IllegalArgumentException("the text holds a zero character");
            memory = text == null ? null : filled(text.getBytes(StandardCharsets.UTF_8));
        }

        private static Memory filled(byte[] bytes) {
            Memory memory = new Memory(bytes.length + 1L);
            memory.clear();
            memory.write(0, bytes, 0, bytes.length);
            Arrays.fill(bytes, (byte)0);
            return memory;
        }

        @Override
        public void close() {
            if (memory != null)
                memory.clear();
        }
    }

    static String out(Pointer text) {
        return text == null ? "" : text.getString(0, "UTF-8");
    }

    static byte[] bytes(Pointer data, long size) {
        return data == null || size == 0 ? new byte[0] : data.getByteArray(0, Math.toIntExact(size));
    }
}

// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** A function of the library failed. */
public final class SigilException extends RuntimeException {
    private static final long serialVersionUID = 1;

    private final int code;
    private final String name;
    private final String sentence;
    private final String advice;
    private final String detail;

    SigilException(int code, Language language, String detail) {
        this(code, text(code, language), detail);
    }

    private SigilException(int code, CLibrary.CodeText text, String detail) {
        super(code + ": " + Texts.out(text.sentence) + " " + Texts.out(text.advice));
        this.code = code;
        this.detail = detail;
        name = Texts.out(text.name);
        sentence = Texts.out(text.sentence);
        advice = Texts.out(text.advice);
    }

    private static CLibrary.CodeText text(int code, Language language) {
        CLibrary.CodeText text = new CLibrary.CodeText();
        CLibrary.INSTANCE.sigil_code_text(code, language.number, text);
        return text;
    }

    /** One of enum SigilResult of the headers, or a toolkit's own. */
    public int code() {
        return code;
    }

    /** Its name there, for example "SIGIL_WRONG_PASSWORD"; empty for a number without one. */
    public String name() {
        return name;
    }

    /** What happened, for a person. */
    public String sentence() {
        return sentence;
    }

    /** What that person can do. */
    public String advice() {
        return advice;
    }

    /** What exactly went wrong; may be empty. */
    public String detail() {
        return detail;
    }
}

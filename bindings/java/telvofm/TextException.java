package telvofm;

/** A text that cannot be sent as it is. Nothing was sent. */
public final class TextException extends TelvofmException {
    private static final long serialVersionUID = 1;

    /** Where in the text the character is, counted from 0. */
    public final int position;

    TextException(String text, int position, String codePage) {
        super(sentence(text.codePointAt(position), position, codePage), null);
        this.position = position;
    }

    private static String sentence(int character, int position, String codePage) {
        if (character == 0) {
            return "The text has a NUL at position " + position + ", where the printer's text would end; take it out.";
        }
        return String.format("The text has the character %s (U+%04X, %s) at position %d, which %s lacks; write it in another way.",
                new String(Character.toChars(character)), character, Character.getName(character), position, codePage);
    }
}

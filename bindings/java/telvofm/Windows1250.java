package telvofm;

import java.util.HashMap;
import java.util.Map;

/** Texts as the library takes and gives them: bytes in Windows-1250. There is no other conversion in this package. */
public final class Windows1250 {
    private static final Map<Character, Byte> BYTES = new HashMap<>();

    static {
        for (int index = 0; index < 128; index++) {
            BYTES.put((char) Windows1250Table.UPPER_HALF[index], (byte) (0x80 + index));
        }
    }

    private Windows1250() {}

    /**
     * The bytes of a text with a NUL behind them, as the raw layer wants each text. Null is empty. Throws TextException for a NUL and
     * for a character that Windows-1250 lacks; says which and where.
     */
    public static byte[] encode(String text) {
        String present = text == null ? "" : text;
        byte[] encoded = new byte[present.length() + 1];
        for (int position = 0; position < present.length(); position++) {
            encoded[position] = byteOf(present, position);
        }
        return encoded;
    }

    /** A letter as the byte that it is, for what the raw layer takes as a byte. Throws TextException. */
    public static byte encode(char letter) {
        return byteOf(String.valueOf(letter), 0);
    }

    /** The text of any bytes, each of them one character; NULs among them stay. Encode gives the same bytes back. */
    public static String decode(byte[] bytes) {
        StringBuilder decoded = new StringBuilder(bytes.length);
        for (byte one : bytes) {
            decoded.append((char) (one >= 0 ? one : Windows1250Table.UPPER_HALF[(one & 0xFF) - 0x80]));
        }
        return decoded.toString();
    }

    private static byte byteOf(String text, int position) {
        char character = text.charAt(position);
        Byte found = character < 0x80 ? Byte.valueOf((byte) character) : BYTES.get(character);
        if (character == 0 || found == null) {
            throw new TextException(text, position, "Windows-1250");
        }
        return found;
    }
}

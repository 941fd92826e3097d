package telvofm;

import java.nio.charset.Charset;
import java.nio.charset.CharsetEncoder;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;

/** Names of files, which are the system's matter and not the printer's: in UTF-8 on Linux, in the system's own code page on Windows. */
public final class FileNames {
    private FileNames() {}

    /** The bytes of a name with a NUL behind them, as the raw layer wants it. Throws TextException for a NUL and for what the system cannot write. */
    public static byte[] encode(String name) {
        boolean isWindows = System.getProperty("os.name").startsWith("Windows");
        Charset charset = isWindows ? Charset.forName(System.getProperty("sun.jnu.encoding")) : StandardCharsets.UTF_8;
        CharsetEncoder encoder = charset.newEncoder();
        for (int position = 0; position < name.length(); position = name.offsetByCodePoints(position, 1)) {
            int end = name.offsetByCodePoints(position, 1);
            if (name.charAt(position) == 0 || !encoder.canEncode(name.substring(position, end))) {
                throw new TextException(name, position, "the system's code page");
            }
        }
        byte[] encoded = name.getBytes(charset);
        return Arrays.copyOf(encoded, encoded.length + 1);
    }
}

package telvofm;

import java.math.BigDecimal;

/** Amounts as the library takes them: text with a point and a fixed number of decimals, in every locale. */
final class Amounts {
    private Amounts() {}

    static byte[] money(BigDecimal amount) {
        return Windows1250.encode(written(amount));
    }

    static byte[] quantity(BigDecimal amount) {
        return Windows1250.encode(fixed(amount, 3));
    }

    /** An amount paid. Zero is refused: for some printers it means all that is due. */
    static byte[] payment(BigDecimal amount) {
        if (amount.signum() == 0) {
            throw new AmountException("A payment of 0 can mean all that is due; say the amount.");
        }
        return money(amount);
    }

    static String written(BigDecimal amount) {
        return fixed(amount, 2);
    }

    /** Whether a text of the printer's is this amount. */
    static boolean isNumber(String text, BigDecimal expected) {
        try {
            return new BigDecimal(text.trim()).compareTo(expected) == 0;
        } catch (NumberFormatException none) {
            return false;
        }
    }

    /** Nothing is rounded: what does not fit is refused. */
    private static String fixed(BigDecimal amount, int decimals) {
        try {
            return amount.setScale(decimals).toPlainString();
        } catch (ArithmeticException tooFine) {
            throw new AmountException(amount.toPlainString() + " has more than " + decimals + " decimals; round it first.");
        }
    }
}

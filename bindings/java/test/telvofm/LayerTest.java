package telvofm;

import com.sun.jna.Native;
import java.io.File;
import java.math.BigDecimal;
import java.util.Arrays;
import java.util.Locale;

/** The layer where the demo receipt does not come: java telvofm.LayerTest ADDRESS. Prints what is wrong, and ends with 1 then. */
final class LayerTest {
    private static int failures;

    private LayerTest() {}

    private static void check(boolean holds, String what) {
        if (!holds) {
            System.out.println("wrong: " + what);
            failures++;
        }
    }

    private static <T extends Exception> void checkThrows(Class<T> kind, String words, Runnable action) {
        try {
            action.run();
            check(false, "no " + kind.getSimpleName() + " with " + words);
        } catch (RuntimeException thrown) {
            check(kind.isInstance(thrown) && thrown.getMessage().contains(words), thrown + " instead of " + kind.getSimpleName() + " with " + words);
        }
    }

    private static BigDecimal amount(String digits) {
        return new BigDecimal(digits);
    }

    private static byte[] bytes(int... values) {
        byte[] made = new byte[values.length];
        for (int index = 0; index < values.length; index++) {
            made[index] = (byte) values[index];
        }
        return made;
    }

    private static void texts() {
        byte[] every = new byte[256]; // 1 to 255, and the NUL behind them
        for (int index = 0; index < 255; index++) {
            every[index] = (byte) (index + 1);
        }
        check(Arrays.equals(Windows1250.encode(Windows1250.decode(Arrays.copyOf(every, 255))), every), "255 bytes and back");
        check(Windows1250.decode(bytes(0)).equals("\0"), "a NUL is read");
        check(Arrays.equals(Windows1250.encode("šč žťľ€"), bytes(0x9A, 0xE8, 0x20, 0x9E, 0x9D, 0xBE, 0x80, 0)), "Windows-1250");
        check(Windows1250.decode(bytes(0x81, 0x83, 0x88, 0x90, 0x98)).equals("\u0081\u0083\u0088\u0090\u0098"), "open bytes");
        check(Windows1250.encode('ž') == (byte) 0x9E, "a letter");
        check(Arrays.equals(Windows1250.encode(null), bytes(0)), "null is empty");
        checkThrows(TextException.class, "ñ (U+00F1, LATIN SMALL LETTER N WITH TILDE) at position 2", () -> Windows1250.encode("Piña"));
        checkThrows(TextException.class, "(U+1F600, GRINNING FACE) at position 1", () -> Windows1250.encode("a\uD83D\uDE00"));
        checkThrows(TextException.class, "(U+D83D", () -> Windows1250.encode("\uD83D")); // half of a character
        checkThrows(TextException.class, "COMBINING CARON) at position 1", () -> Windows1250.encode("s\u030C")); // another way to write š
        checkThrows(TextException.class, "NUL at position 6", () -> Windows1250.encode("Chlieb\0 tajný"));
    }

    private static void failuresOfCalls() {
        CallException refused = CallException.of("itemSale_str", 26, false);
        check(refused instanceof RefusedException && refused.executed == CodeMeaning.Executed.NO, "a refusal");
        check(refused.getMessage().startsWith("itemSale_str: code 26 (refused): ")
                && refused.getMessage().contains("It was not carried out."), refused.getMessage());
        check(CallException.of("payment_str", 32, true).executed == CodeMeaning.Executed.UNKNOWN, "a slow refusal");
        for (int code : new int[] {-10201, -10202, -10002, 64, -77}) {
            check(CallException.of("paragonEnd", code, false) instanceof OutcomeUnknownException, "code " + code);
        }
        check(CallException.of("openFM", -1, true) instanceof NotExecutedException, "what never left");
        checkThrows(LibraryException.class, "32 bits; install a 64-bit Java", () -> TelvofmLibrary.requireBits(32));
    }

    private static void amounts() {
        check(Amounts.written(amount("12.5")).equals("12.50") && Amounts.written(amount("2.50000")).equals("2.50"), "decimals");
        check(Amounts.written(amount("1E+6")).equals("1000000.00") && Amounts.written(amount("-0.00")).equals("0.00"), "whole numbers");
    }

    private static Receipt withOneItem(Session session) {
        Receipt receipt = session.receipt();
        receipt.begin();
        receipt.sell("Žemľa", amount("0.25"), 'A', amount("1"), amount("0.25"), "ks");
        return receipt;
    }

    private static void openSession(Session session, String address) {
        checkThrows(IllegalStateException.class, "one at a time; close it first", () -> new Session(address).close());
        check(!session.beginDay(), "a new day whose acknowledge is lost");
        check(!session.beginDay(), "a day that is open");
        Functions functions = session.functions;
        byte[] password = Windows1250.encode("0000");
        session.call("setHeader", () -> functions.setHeader(session.device, password, 1, Windows1250.encode("Potraviny Šťastný")));
        session.call("freeID", () -> functions.freeID(session.device, (byte) 1, Windows1250.encode("ščžťľ")));
        truths(session);
        refusals(session);
        session.call("printReport", () -> functions.printReport(session.device, Windows1250.encode('X'), 1));
        checkThrows(RefusedException.class, "getVariable", () -> session.variable("NOTHING_LIKE_THAT"));
        for (int number = 1; number <= 3; number++) {
            Receipt receipt = withOneItem(session);
            receipt.pay(1, amount("0.25"), "Hotovosť");
            check(receipt.end().equals(String.valueOf(number)), "receipt " + number);
        }
        check(session.journal().split("Žemľa").length == 4, "three items in the journal");
        check(session.lastReceipt().contains("Receipt 3"), "the last receipt");
        session.call("getJournal_str_tofile", () -> functions.getJournal_str_tofile(session.device, FileNames.encode("žurnál.txt")));
        checkThrows(TextException.class, "NUL at position 1", () -> FileNames.encode("a\0.txt"));
        byte[] second = session.read("getJournalStructZ_ResultObject",
                result -> functions.getJournalStructZ_ResultObject(session.device, 2, 2, result));
        check(Windows1250.decode(second).contains("Receipt 2"), "the second receipt");
        session.call("printReport", () -> functions.printReport(session.device, Windows1250.encode('Z'), 1));
        check(session.beginDay(), "a new day");
    }

    /** Any byte but 0 is true, as other languages and compilers have it. */
    private static void truths(Session session) {
        byte[] id = Windows1250.encode("ščžťľ");
        for (byte truth : bytes(2, -1, 0)) {
            session.call("freeID", () -> session.functions.freeID(session.device, truth, id));
            session.functions.setAutoTwoLineItem(truth);
            check(session.functions.isAutoTwoLineItem() == (truth == 0 ? 0 : 1), "the truth " + truth);
        }
    }

    /** What fails before anything is sent; the result objects are counted from outside. */
    private static void refusals(Session session) {
        checkThrows(TextException.class, "ñ (U+00F1", () -> session.variable("ñ"));
        checkThrows(TextException.class, "at position 0", () -> session.read("getVariableResultObject",
                result -> session.functions.getVariableResultObject(session.device, Windows1250.encode("ñ"), result)));
        BigDecimal one = BigDecimal.ONE;
        checkThrows(TextException.class, "at position 2", () -> session.receipt().sell("Piña", one, 'A', one, one, "ks"));
        BufferFunctions buffers = Native.load(System.getenv("TELVOFM_LIBRARY"), BufferFunctions.class);
        checkThrows(IllegalArgumentException.class, "getJournal fills a buffer, and one that is too short ends the process",
                () -> session.call("getJournal", () -> buffers.getJournal(session.device, new byte[1], 1)));
    }

    /** A session that is closed leaves the connection of the next one alone. */
    private static void anotherSession(String address) {
        Session first = new Session(address);
        Receipt receipt = withOneItem(first);
        first.close();
        check(receipt.recover().verdict == Recovery.Verdict.ASK_A_PERSON, "a receipt whose session is closed");
        try (Session another = new Session(address)) {
            another.functions.setAutoTwoLineItem((byte) 1); // is forgotten when a connection is opened
            checkThrows(NotExecutedException.class, "code -1 (notOpen): This session is closed.", first::reopen);
            checkThrows(NotExecutedException.class, "This session is closed.", first::beginDay);
            checkThrows(NotExecutedException.class, "This session is closed.", first::journal);
            checkThrows(NotExecutedException.class, "This session is closed.", () -> receipt.cancel(""));
            Recovery recovery = receipt.recover();
            check(recovery.verdict == Recovery.Verdict.ASK_A_PERSON && recovery.sentence.startsWith("the session of this receipt is closed"),
                    recovery.toString());
            first.close();
            check(!first.isOpen() && another.isOpen() && another.functions.isAutoTwoLineItem() == 1, "the connection of another session");
            check(another.variable("STATE").equals("open"), "the receipt of a session that was closed");
            check(another.interruptedReceipt(receipt.numberBefore(), amount("0.25")).recover().verdict == Recovery.Verdict.NOT_SOLD,
                    "a receipt of another session");
        }
    }

    private static void recovering(Session session) {
        Receipt forgotten = withOneItem(session);
        forgotten.pay(1, amount("0.25"), "Hotovosť");
        checkThrows(OutcomeUnknownException.class, "last receipt is still 3", forgotten::end);
        Recovery recovery = forgotten.recover();
        check(recovery.verdict == Recovery.Verdict.SOLD && recovery.number.equals("4"), "a receipt whose end was forgotten, behind its like");
        Receipt empty = session.receipt();
        empty.begin();
        check(empty.recover().verdict == Recovery.Verdict.NOT_SOLD, "a receipt without a line");
        empty.begin();
        checkThrows(RefusedException.class, "paragonEnd", empty::end);
        check(empty.recover().verdict == Recovery.Verdict.NOT_SOLD, "one whose end was refused");
        empty.begin();
        check(session.interruptedReceipt(empty.numberBefore(), BigDecimal.ZERO).recover().verdict == Recovery.Verdict.NOT_SOLD,
                "a till that was switched off behind begin");

        BigDecimal one = BigDecimal.ONE;
        Receipt receipt = withOneItem(session);
        checkThrows(AmountException.class, "1.005 has more than 2 decimals; round it first", () -> receipt.pay(1, amount("1.005"), ""));
        checkThrows(AmountException.class, "0.1255 has more than 3 decimals; round it first", () -> receipt.sell("Med", one, 'A', amount("0.1255"), one, "ks"));
        checkThrows(AmountException.class, "8.333 has more than 2 decimals; round it first", () -> receipt.sell("Med", one, 'A', one, amount("8.333"), "ks"));
        checkThrows(AmountException.class, "0.0000001 has more than 2 decimals", () -> receipt.pay(1, amount("1E-7"), ""));
        checkThrows(AmountException.class, "say the amount", () -> receipt.pay(1, amount("0.00"), ""));
        checkThrows(RefusedException.class, "itemSale_str", () -> receipt.sell("Med", one, 'H', one, one, "ks")); // no such rate; it goes on
        checkThrows(AmountException.class, "23.595 has more than 2 decimals", () -> receipt.setTotal(amount("23.595")));
        checkThrows(AmountException.class, "23.595 has more than 2 decimals", () -> session.interruptedReceipt("1", amount("23.595")));
        receipt.setTotal(receipt.total().add(one));
        checkThrows(OutcomeUnknownException.class, "the total is \"0.25\", for the till 1.25", () -> receipt.pay(1, amount("1.25"), ""));
        checkThrows(OutcomeUnknownException.class, "for the till 1.25", () -> receipt.sell("Med", one, 'A', one, one, "ks"));
        checkThrows(OutcomeUnknownException.class, "for the till 1.25", receipt::begin);
        check(receipt.recover().verdict == Recovery.Verdict.NOT_SOLD, "a receipt of another total");
        check(receipt.recover().verdict == Recovery.Verdict.NOT_SOLD, "asked again");
        receipt.begin();
        check(receipt.total().signum() == 0, "the same object begins afresh");
        receipt.sell("Med", one, 'A', one, one, "ks");
        receipt.cancel("");
        checkThrows(NotExecutedException.class, "is over", () -> receipt.cancel(""));

        Receipt left = withOneItem(session);
        Receipt another = session.receipt();
        checkThrows(NotExecutedException.class, "was not begun", () -> another.cancel(""));
        checkThrows(NotExecutedException.class, "paragonBegin: code -1 (notOpen): Another receipt is open", another::begin);
        checkThrows(NotExecutedException.class, "or another one may be open. It was not carried out. To cancel another one call "
                + "destroyParagon through the session.", () -> another.cancel(""));
        check(another.recover().verdict == Recovery.Verdict.ASK_A_PERSON && session.variable("STATE").equals("open"),
                "a receipt behind one that was open");
        BigDecimal total = amount("0.25");
        check(session.interruptedReceipt(left.numberBefore(), total).recover().verdict == Recovery.Verdict.NOT_SOLD, "a till that was switched off");
        check(session.interruptedReceipt("2", total).recover().number.equals("4"), "a till that was switched off behind the end");
        check(session.interruptedReceipt("1", amount("7")).recover().verdict == Recovery.Verdict.ASK_A_PERSON, "a receipt of somebody else");
    }

    /** Nothing goes into it, and nothing is sent. */
    private static void takesNothing(Session session, Receipt receipt, String what) {
        File log = new File("nothing.log");
        BigDecimal one = BigDecimal.ONE;
        session.functions.setRawLogginOn(FileNames.encode(log.getPath()));
        checkThrows(NotExecutedException.class, "This receipt is not open", () -> receipt.sell("Med", one, 'A', one, one, "ks"));
        checkThrows(NotExecutedException.class, "This receipt is not open", () -> receipt.voidItem("Med", one, 'A', one, one, "ks"));
        checkThrows(NotExecutedException.class, "This receipt is not open", () -> receipt.discount("Zľava", one, 'A'));
        checkThrows(NotExecutedException.class, "This receipt is not open", () -> receipt.pay(1, one, ""));
        checkThrows(NotExecutedException.class, "This receipt is not open", receipt::end);
        session.functions.seRawLogginOff();
        check(log.exists() && log.length() == 0, "something is sent for " + what);
    }

    private static void whatIsNotOpen(Session session) {
        BigDecimal one = BigDecimal.ONE;
        Receipt open = withOneItem(session);
        Receipt other = session.receipt();
        takesNothing(session, other, "a receipt that was not begun");
        checkThrows(NotExecutedException.class, "paragonBegin", other::begin);
        takesNothing(session, other, "one whose begin was refused");
        checkThrows(NotExecutedException.class, "This receipt is open already", open::begin);
        open.sell("Med", one, 'A', one, one, "ks");
        check(session.variable("TOTAL").equals("1.25"), "what the receipt that was open has");
        open.cancel("");
        takesNothing(session, open, "one that is cancelled");

        Receipt followed = withOneItem(session);
        session.call("destroyParagon", () -> session.functions.destroyParagon(session.device, 0, null)); // past the object
        Receipt next = withOneItem(session);
        takesNothing(session, followed, "one that another has followed");
        checkThrows(NotExecutedException.class, "or another one may be open", () -> followed.cancel(""));
        check(followed.recover().sentence.startsWith("another receipt was begun since") && session.variable("STATE").equals("open"),
                "the one that followed");
        next.cancel("");

        session.call("printReport", () -> session.functions.printReport(session.device, Windows1250.encode('Z'), 1));
        checkThrows(RefusedException.class, "paragonBegin", next::begin); // no day is open, nor is a receipt
        takesNothing(session, next, "one that nobody has begun");
        check(next.recover().verdict == Recovery.Verdict.NOT_SOLD, "one that was refused without a day");
        check(session.beginDay(), "the day after");
    }

    private static void printerThatCannotBeAsked(String address) {
        checkThrows(IllegalArgumentException.class, "give all of them, or Questions.NONE",
                () -> new Questions("LAST_RECEIPT", "LAST_TOTAL", "STATE", "closed", "TOTAL", null));
        try (Session blind = new Session(address, 1, Questions.NONE)) {
            Receipt open = withOneItem(blind);
            Receipt other = blind.receipt();
            checkThrows(RefusedException.class, "paragonBegin", other::begin);
            takesNothing(blind, other, "one behind another, for all that is known");
            checkThrows(NotExecutedException.class, "or another one may be open", () -> other.cancel(""));
            open.pay(1, amount("0.25"), "");
            checkThrows(AmountException.class, "Nothing is left to pay", () -> open.pay(1, amount("0.25"), ""));
            check(open.end().isEmpty(), "the number of a receipt that nobody knows");
            takesNothing(blind, open, "one that is ended");
            checkThrows(NotExecutedException.class, "is over", () -> open.cancel(""));
        }
        Questions questions = new Questions("VAT_H", "LAST_TOTAL", "STATE", "closed", "TOTAL", "DUE"); // empty: no rate
        try (Session session = new Session(address, 1, questions)) {
            checkThrows(NotExecutedException.class, "What the printer answers for VAT_H is not one line of text", session.receipt()::begin);
        }
    }

    public static void main(String[] arguments) {
        Locale.setDefault(new Locale("sk", "SK")); // with decimal commas
        texts();
        amounts();
        failuresOfCalls();
        try (Session session = new Session(arguments[0])) {
            openSession(session, arguments[0]);
            recovering(session);
            whatIsNotOpen(session);
        }
        anotherSession(arguments[0]);
        printerThatCannotBeAsked(arguments[0]);
        System.exit(failures == 0 ? 0 : 1);
    }
}

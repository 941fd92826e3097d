import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.PrintStream;
import java.io.UnsupportedEncodingException;
import java.math.BigDecimal;
import telvofm.CallException;
import telvofm.LibraryException;
import telvofm.Receipt;
import telvofm.Recovery;
import telvofm.Session;

/** Sells the demo receipt (../../demo_receipt.md), and finds out what happened when something fails: java DemoReceipt ADDRESS */
final class DemoReceipt {
    private DemoReceipt() {}

    private static BigDecimal amount(String digits) {
        return new BigDecimal(digits);
    }

    private static void fill(Receipt receipt) {
        receipt.begin();
        receipt.sell("Chlieb šumavský", amount("12.50"), 'A', amount("1.5"), amount("8.33"), "kg");
        receipt.sell("Čučoriedková šťava", amount("3.90"), 'B', amount("2"), amount("1.95"), "fľa");
        receipt.sell("Žemľa", amount("2.50"), 'A', amount("10"), amount("0.25"), "ks");
        receipt.sell("Horúca čokoláda", amount("2.40"), 'B', amount("2"), amount("1.20"), "šál");
        receipt.sell("Med", amount("1.20"), 'C', amount("3"), amount("0.40"), "lyž");
        receipt.sell("Jogurt", amount("0.89"), 'C', amount("1"), amount("0.89"), "čaš");
        receipt.sell("Ťahaná štrúdľa", amount("3.00"), 'A', amount("4"), amount("0.75"), "ťah");
        receipt.discount("Zľava stálym zákazníkom", amount("0.30"), 'A');
        receipt.voidItem("Žemľa", amount("2.50"), 'A', amount("10"), amount("0.25"), "ks");
        receipt.pay(4, amount("5.00"), "Šaľa");
        receipt.pay(2, amount("5.00"), "Čip. karta");
        receipt.pay(3, amount("4.00"), "Poukážka");
        receipt.pay(1, amount("20.00"), "Hotovosť");
    }

    /** Sells the receipt, says what has become of it, and returns the code that the program ends with. */
    private static int sell(Session session) {
        session.beginDay();
        Receipt receipt = session.receipt();
        try {
            fill(receipt);
            String number = receipt.end();
            System.out.println("sold: receipt " + number + ", total " + receipt.total());
            return 0;
        } catch (CallException failure) {
            System.out.println("failed: " + failure.getMessage());
            Recovery recovery = receipt.recover();
            System.out.println(recovery);
            return recovery.verdict == Recovery.Verdict.SOLD ? 0 : recovery.verdict == Recovery.Verdict.NOT_SOLD ? 1 : 3;
        }
    }

    private static int run(String[] arguments) {
        if (arguments.length != 1) {
            System.err.println("usage: java DemoReceipt ADDRESS");
            return 2;
        }
        try (Session session = new Session(arguments[0])) {
            return sell(session);
        } catch (LibraryException missing) {
            System.err.println(missing.getMessage());
            return 2;
        } catch (CallException failure) {
            System.out.println("not sold: " + failure.getMessage());
            return 1;
        }
    }

    public static void main(String[] arguments) throws UnsupportedEncodingException {
        // In UTF-8, whatever the terminal's own code page.
        System.setOut(new PrintStream(new FileOutputStream(FileDescriptor.out), true, "UTF-8"));
        System.exit(run(arguments));
    }
}

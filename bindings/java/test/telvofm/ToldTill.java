package telvofm;

import java.math.BigDecimal;
import java.util.HashMap;
import java.util.Map;
import java.util.Scanner;

/** A till that is told each of its steps by told_till_test.py: java telvofm.ToldTill ADDRESS. */
final class ToldTill {
    private final Session session;
    private final Map<String, Receipt> receipts = new HashMap<>();

    private ToldTill(Session session) {
        this.session = session;
    }

    /** "done", with what the step delivers behind it, or what failed. */
    private String said(String line) {
        try {
            return ("done " + done(line.split(" "))).trim();
        } catch (CallException failure) {
            return failure.getClass().getSimpleName().replace("Exception", "") + " " + failure.getMessage();
        }
    }

    private String done(String[] words) {
        String name = words.length > 1 ? words[1] : "";
        BigDecimal sum = words.length > 2 ? new BigDecimal(words[2]) : BigDecimal.ZERO;
        switch (words[0]) {
            case "day":
                session.beginDay();
                return "";
            case "ask":
                return session.variable(name);
            case "reopen":
                session.reopen();
                return "";
            case "forget":
                receipts.clear();
                return "";
            case "interrupted":
                receipts.put(name, session.interruptedReceipt(words.length > 3 ? words[3] : "", sum));
                return "";
            default:
                return ofReceipt(words[0], receipts.computeIfAbsent(name, none -> session.receipt()), sum);
        }
    }

    private static String ofReceipt(String step, Receipt receipt, BigDecimal sum) {
        switch (step) {
            case "begin":
                receipt.begin();
                return "";
            case "sell":
                receipt.sell("Čaj", sum, 'A', BigDecimal.ONE, sum, "");
                return "";
            case "void":
                receipt.voidItem("Čaj", sum, 'A', BigDecimal.ONE, sum, "");
                return "";
            case "pay":
                receipt.pay(1, sum, "");
                return "";
            case "cancel":
                receipt.cancel();
                return "";
            case "recover":
                return receipt.recover().toString();
            default:
                return receipt.end();
        }
    }

    public static void main(String[] arguments) {
        try (Session session = new Session(arguments[0]); Scanner lines = new Scanner(System.in, "UTF-8")) {
            ToldTill till = new ToldTill(session);
            while (lines.hasNextLine()) {
                System.err.println(till.said(lines.nextLine())); // the library writes to standard output
            }
        }
    }
}

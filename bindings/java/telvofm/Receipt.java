package telvofm;

import java.math.BigDecimal;
import java.util.function.IntSupplier;

/**
 * A receipt that compares its own total with the printer's, because a request whose answer was lost is sent again, may be carried
 * out twice, and returns 0. After any failure recover tells what happened.
 *
 * <p>What is sent throws RefusedException (the receipt goes on), OutcomeUnknownException (it takes nothing more) or
 * NotExecutedException. Texts go out in Windows-1250: TextException names a character that it lacks. AmountException is for amounts with
 * more decimals than money (2) or quantities (3) have. After these two nothing was sent. Nor is anything, and NotExecutedException is
 * thrown, when begin has not worked, when the receipt is over, and when another object of the session has begun one since: what is open
 * then is not this one.
 */
public final class Receipt {
    final Session session;
    private final Functions functions;
    private final ReceiptCalls calls;
    private boolean begun; // or may be
    private boolean compared; // its total with the printer's, before the first payment
    private boolean finished; // as far as the till goes: paid in full, refused or not, or told to end
    private Recovery outcome; // when it is certain
    private String numberBefore;
    private BigDecimal total = BigDecimal.ZERO;
    private BigDecimal paid = BigDecimal.ZERO;

    Receipt(Session session) {
        this.session = session;
        functions = session.functions;
        calls = new ReceiptCalls(session);
    }

    static Receipt interrupted(Session session, String numberBefore, BigDecimal total) {
        Receipt receipt = new Receipt(session);
        receipt.begun = true;
        receipt.finished = total.signum() != 0; // a till that has kept no total says 0
        receipt.numberBefore = numberBefore;
        receipt.setTotal(total);
        receipt.paid = total;
        receipt.calls.doubted("recover", "The till was interrupted in this receipt.");
        receipt.calls.claimWhatIsOpen();
        return receipt;
    }

    /** The last receipt's number before this one began; null while it has not, or when the printer cannot be asked. */
    public String numberBefore() {
        return numberBefore;
    }

    /** What is sold so far. */
    public BigDecimal total() {
        return total;
    }

    /** Corrects it after what went to the printer past this class. Throws AmountException. */
    public void setTotal(BigDecimal total) {
        Amounts.money(total);
        this.total = total;
    }

    /** What is paid so far. */
    public BigDecimal paid() {
        return paid;
    }

    /** What an earlier receipt of this object has left. */
    private void startAfresh() {
        numberBefore = null;
        total = BigDecimal.ZERO;
        paid = BigDecimal.ZERO;
        begun = false;
        outcome = null;
        compared = false;
        finished = false;
        calls.startAfresh();
    }

    // ---- Selling ----

    /** Opens the receipt with the virtual printer's numbers; see the other begin. */
    public void begin() {
        begin(1, 0, 0, 1, 0);
    }

    /**
     * Opens the receipt; what the numbers mean is the printer's matter. Throws as every call does, and NotExecutedException also while
     * any receipt is open, and when the printer does not say whether one is; it is asked again over a new connection before, which
     * forgets the settings and pictures of the session. Throws OutcomeUnknownException also while it is unknown what became of the
     * receipt that was begun before with this object. After a failure call recover before anything else: the printer may have opened it
     * and refused the same request when it was sent again.
     */
    public void begin(int saleType, int commission, int receiptType, int recapitulation, int picture) {
        calls.requireNoDoubt();
        if (!calls.isOpen()) {
            startAfresh();
        }
        String lastNumber = calls.canBeAsked() ? calls.numberWhileNoneIsOpen() : null;
        startAfresh();
        numberBefore = lastNumber;
        begun = true;
        if (calls.canBeAsked()) {
            calls.claimWhatIsOpen();
        }
        try {
            calls.send("paragonBegin", () -> functions.paragonBegin(session.device, 0, saleType, commission, receiptType, recapitulation, picture));
        } catch (NotExecutedException failure) {
            begun = false;
            throw failure;
        }
        calls.take();
    }

    /**
     * Sells an item: `total` for `quantity` of `unit` at `unitPrice` each, under the printer's letter of a VAT rate. The library sends no
     * more than 3 bytes of `unit`. Throws CallException, TextException and AmountException.
     */
    public void sell(String name, BigDecimal total, char vat, BigDecimal quantity, BigDecimal unitPrice, String unit) {
        byte[] words = Windows1250.encode(name), sum = Amounts.money(total), letter = Windows1250.encode(String.valueOf(vat));
        byte[] amount = Amounts.quantity(quantity), price = Amounts.money(unitPrice), units = Windows1250.encode(unit);
        line(total, "itemSale_str", () -> functions.itemSale_str(session.device, 0, words, sum, letter, amount, price, units));
    }

    /** Takes an item of this receipt back, which was sold with the same arguments; `void` is a word of Java's own. Throws as sell does. */
    public void voidItem(String name, BigDecimal total, char vat, BigDecimal quantity, BigDecimal unitPrice, String unit) {
        byte[] words = Windows1250.encode(name), sum = Amounts.money(total), letter = Windows1250.encode(String.valueOf(vat));
        byte[] amount = Amounts.quantity(quantity), price = Amounts.money(unitPrice), units = Windows1250.encode(unit);
        line(total.negate(), "itemVoid_str",
                () -> functions.itemVoid_str(session.device, 0, words, sum, letter, amount, price, units, null));
    }

    /** A discount of a sum on the item that was sold last, under the number 0. Throws as sell does. */
    public void discount(String description, BigDecimal amount, char vat) {
        discount(description, amount, vat, 0);
    }

    /** A discount of a sum on the item that was sold last; `operation` is the printer's number for that. Throws as sell does. */
    public void discount(String description, BigDecimal amount, char vat, int operation) {
        byte[] words = Windows1250.encode(description), sum = Amounts.money(amount), letter = Windows1250.encode(String.valueOf(vat));
        line(amount.negate(), "itemDiscount_str", () -> functions.itemDiscount_str(session.device, 0, words, operation, sum, letter));
    }

    /**
     * Takes a payment under the printer's payment type. More than is due is given back. The library sends no more than 10 bytes of the
     * description. Throws as sell does, AmountException also for 0 and when it is paid in full, and OutcomeUnknownException when the
     * printer's total or what is due is not the till's.
     */
    public void pay(int type, BigDecimal amount, String description) {
        byte[] sum = Amounts.money(total), part = Amounts.payment(amount), words = Windows1250.encode(description);
        byte[] noExchange = Windows1250.encode("0");
        calls.requireOpen("payment_str");
        if (paid.signum() != 0 && due(BigDecimal.ZERO).signum() == 0) {
            throw new AmountException("Nothing is left to pay.");
        }
        if (!compared) {
            calls.compareAnswer("payment_str", session.questions.total, total, "the total");
            compared = true;
        }
        try {
            calls.send("payment_str", () -> functions.payment_str(session.device, 0, type, sum, part, noExchange, words));
        } catch (OutcomeUnknownException unknown) {
            count(amount); // as it was meant
            throw unknown;
        } catch (RefusedException refused) {
            finished = due(amount).signum() == 0; // it may have been taken before its refusal, which the printer's totals tell
            calls.compareAnswer("payment_str", session.questions.due, due(BigDecimal.ZERO), "what is due");
            throw refused;
        }
        count(amount);
        calls.compareAnswer("payment_str", session.questions.due, due(BigDecimal.ZERO), "what is due");
    }

    /** Ends the receipt without a picture; see the other end. */
    public String end() {
        return end(0);
    }

    /**
     * Ends the receipt and returns its number; an empty one if the printer cannot be asked. `picture` is the printer's number of one, 0
     * for none. Throws CallException; OutcomeUnknownException also when the printer's last receipt is not this one.
     */
    public String end(int picture) {
        calls.requireOpen("paragonEnd");
        finished = true;
        calls.send("paragonEnd", () -> functions.paragonEnd(session.device, 0, picture));
        if (!calls.canBeAsked()) {
            calls.finish();
            return "";
        }
        String number = calls.compareEnded(numberBefore, total);
        finish(Recovery.soldAs(number, total));
        return number;
    }

    /** Cancels the receipt without a description; see the other cancel. */
    public void cancel() {
        cancel("");
    }

    /**
     * Cancels the receipt; the printer prints the description. Throws CallException and TextException; NotExecutedException also when it
     * was not begun, is over, or when what is open may be another one: that is left alone; OutcomeUnknownException also when a receipt is
     * open behind it, or another one is the last.
     */
    public void cancel(String description) {
        byte[] words = Windows1250.encode(description);
        if (!begun || calls.isOver() || !calls.hasBegunLast()) {
            throw NotExecutedException.notOurs("destroyParagon");
        }
        calls.send("destroyParagon", () -> functions.destroyParagon(session.device, 0, words));
        calls.compareCancelled(numberBefore);
        finish(new Recovery(Recovery.Verdict.NOT_SOLD, "the receipt is cancelled", ""));
    }

    /** It is certain what has become of it. */
    private void finish(Recovery certain) {
        outcome = certain;
        calls.finish();
    }

    // ---- Counting ----

    private void line(BigDecimal value, String call, IntSupplier function) {
        calls.requireOpen(call);
        calls.send(call, function);
        total = total.add(value);
    }

    private void count(BigDecimal amount) {
        paid = paid.add(amount);
        finished = due(BigDecimal.ZERO).signum() == 0;
    }

    /** What is left to pay, or to pay out, after this amount too; more than that is given back. */
    private BigDecimal due(BigDecimal amount) {
        BigDecimal due = total.subtract(paid).subtract(amount);
        return due.signum() == total.signum() ? due : BigDecimal.ZERO;
    }

    // ---- Recovering ----

    /**
     * Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it should be, and cancelled
     * otherwise. Throws nothing for what the printer does, and may be called again: what is certain, as behind an end or a cancel that
     * worked, stays as it was said, and the printer is not asked again. When its session is closed it asks nobody, whoever has opened
     * another: a person has to look.
     */
    public Recovery recover() {
        if (outcome != null) {
            return outcome;
        }
        if (calls.isAnotherOpen()) {
            return new Recovery(Recovery.Verdict.ASK_A_PERSON, "another receipt is open, and this one was not begun; end that one with "
                    + "paragonEnd or cancel it with destroyParagon, called through the session, before this one is sold", "");
        }
        if (!begun) {
            return new Recovery(Recovery.Verdict.NOT_SOLD, "the receipt was not begun", "");
        }
        if (!session.isOpen()) {
            return new Recovery(Recovery.Verdict.ASK_A_PERSON, "the session of this receipt is closed; look at the printer's paper before it "
                    + "is sold again, or recover it as an interrupted receipt of another session", "");
        }
        if (!calls.canBeAsked() || numberBefore == null || numberBefore.isEmpty()) {
            return new Recovery(Recovery.Verdict.ASK_A_PERSON,
                    "this printer cannot be asked; look at its paper before this receipt is sold again", "");
        }
        if (!calls.hasBegunLast()) {
            return new Recovery(Recovery.Verdict.ASK_A_PERSON, "another receipt was begun since, and is left alone; look at the printer's "
                    + "paper before this one is sold again", "");
        }
        Recovery recovery = Recovery.ask(session, numberBefore, total, paid, finished);
        if (recovery.verdict != Recovery.Verdict.ASK_A_PERSON) {
            finish(recovery);
        }
        return recovery;
    }
}

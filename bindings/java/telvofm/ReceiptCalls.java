package telvofm;

import java.math.BigDecimal;
import java.util.List;
import java.util.function.IntSupplier;
import java.util.function.Supplier;

/** The calls of one receipt and its questions to the printer: none is made that could go into another one. */
final class ReceiptCalls {
    private final Session session;
    private boolean taken; // by the printer, which answered begin with 0
    private boolean over; // ended, cancelled, or recovered without a person: nothing of it is open
    private boolean anotherOpen; // so that this one was not begun
    private OutcomeUnknownException doubt; // after it nothing more is sold into the receipt

    ReceiptCalls(Session session) {
        this.session = session;
    }

    void startAfresh() {
        taken = false;
        over = false;
        anotherOpen = false;
        doubt = null;
    }

    /** From here on whatever is open is this one. */
    void claimWhatIsOpen() {
        session.begunLast = this;
    }

    /** The printer has begun it. */
    void take() {
        claimWhatIsOpen();
        taken = true;
    }

    void finish() {
        over = true;
    }

    boolean isOver() {
        return over;
    }

    /** Whether another one is, so that this one was not begun. */
    boolean isAnotherOpen() {
        return anotherOpen;
    }

    /** Of the receipts of the session: whatever is open is this one. */
    boolean hasBegunLast() {
        return session.begunLast == this;
    }

    boolean isOpen() {
        return taken && !over && hasBegunLast();
    }

    void requireNoDoubt() {
        if (doubt != null && !over) {
            throw doubt;
        }
    }

    /** What is sent goes into whatever receipt the printer has open. */
    void requireOpen(String call) {
        requireNoDoubt();
        if (!isOpen()) {
            throw NotExecutedException.notBegun(call);
        }
    }

    /** One call. Whatever leaves its outcome open is remembered. */
    void send(String call, IntSupplier function) {
        try {
            session.call(call, function);
        } catch (OutcomeUnknownException unknown) {
            doubt = unknown;
            throw unknown;
        }
    }

    boolean canBeAsked() {
        return session.questions.lastReceipt != null;
    }

    /**
     * The last receipt's, before a begin. One wrong answer is not believed, and a connection that is dead or has shifted is opened again.
     */
    String numberWhileNoneIsOpen() {
        List<String> last = null;
        try {
            last = Answers.withLastNumber(session, session.questions.state);
        } catch (CallException asksAgain) {
            last = null;
        }
        if (last == null || !isClosed(last)) {
            if (last != null) {
                requireNotOpen();
            }
            session.reopen();
            last = askedAgain();
        }
        if (!isClosed(last)) {
            requireNotOpen();
            anotherOpen = true;
            throw NotExecutedException.anotherOpen("paragonBegin");
        }
        return last.get(0);
    }

    private void requireNotOpen() {
        if (isOpen()) {
            throw NotExecutedException.alreadyBegun("paragonBegin");
        }
    }

    private List<String> askedAgain() {
        try {
            return Answers.withLastNumber(session, session.questions.state);
        } catch (OutcomeUnknownException failure) {
            throw NotExecutedException.unanswered("paragonBegin", failure);
        }
    }

    /** Behind the last receipt's number and the state. */
    private boolean isClosed(List<String> last) {
        return last.get(1).equals(session.questions.closed);
    }

    /** Behind a cancelling: none is open, and the last receipt is that of before. */
    void compareCancelled(String numberBefore) {
        if (!canBeAsked()) {
            return;
        }
        List<String> last = answered("destroyParagon", () -> Answers.withLastNumber(session, session.questions.state));
        if (!last.get(0).equals(numberBefore) || !isClosed(last)) {
            throw doubted("destroyParagon", "The printer's last receipt is " + last.get(0) + ", and its state " + last.get(1) + ".");
        }
    }

    /** Behind an end: the last receipt is another one than before, of this total. Returns its number. */
    String compareEnded(String numberBefore, BigDecimal total) {
        List<String> last = answered("paragonEnd", () -> Answers.withLastNumber(session, session.questions.lastTotal));
        if (last.get(0).equals(numberBefore)) {
            throw doubted("paragonEnd", "The printer's last receipt is still " + last.get(0) + ".");
        }
        compare("paragonEnd", last.get(1), total, "the total of the last receipt");
        return last.get(0);
    }

    void compareAnswer(String call, String question, BigDecimal expected, String what) {
        if (canBeAsked()) {
            compare(call, answered(call, () -> Answers.to(session, question)), expected, what);
        }
    }

    private void compare(String call, String answer, BigDecimal expected, String what) {
        if (!Amounts.isNumber(answer, expected)) {
            throw doubted(call, "For the printer " + what + " is \"" + answer + "\", for the till " + Amounts.written(expected)
                    + ": something was carried out twice, or not at all.");
        }
    }

    /** What the questions give; one that fails leaves the call in doubt. */
    private <T> T answered(String call, Supplier<T> ask) {
        try {
            return ask.get();
        } catch (CallException failure) {
            throw doubted(call, "The printer does not say what it has done (" + failure.reason() + ").");
        }
    }

    OutcomeUnknownException doubted(String call, String happened) {
        doubt = OutcomeUnknownException.doubt(call, happened);
        return doubt;
    }
}

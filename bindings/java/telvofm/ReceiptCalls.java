package telvofm;

import java.math.BigDecimal;
import java.util.function.IntSupplier;

/** The calls of one receipt and its questions to the printer: none is made that could go into another one. */
final class ReceiptCalls {
    private final Session session;
    private boolean taken; // by the printer, which answered begin with 0
    private boolean over; // ended, cancelled, or recovered without a person: nothing of it is open
    private OutcomeUnknownException doubt; // after it nothing more is sold into the receipt

    ReceiptCalls(Session session) {
        this.session = session;
    }

    void startAfresh() {
        taken = false;
        over = false;
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

    void compare(String call, String question, BigDecimal expected, String what) {
        String answer = answer(call, question);
        if (answer != null && !Amounts.isNumber(answer, expected)) {
            throw doubted(call, "For the printer " + what + " is \"" + answer + "\", for the till " + Amounts.written(expected)
                    + ": something was carried out twice, or not at all.");
        }
    }

    /** What the printer answers; null when it cannot be asked. A question that fails leaves the call in doubt. */
    String answer(String call, String question) {
        try {
            return asked(question);
        } catch (CallException failure) {
            throw doubted(call, "The printer does not say what it has done (" + failure.call + ": code " + failure.code + ").");
        }
    }

    String asked(String question) {
        return question == null ? null : session.variable(question);
    }

    OutcomeUnknownException doubted(String call, String happened) {
        doubt = OutcomeUnknownException.doubt(call, happened);
        return doubt;
    }
}

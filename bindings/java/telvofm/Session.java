package telvofm;

import com.sun.jna.Pointer;
import java.lang.reflect.Method;
import java.math.BigDecimal;
import java.time.Duration;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.IntSupplier;
import java.util.function.ToIntFunction;

/**
 * A printer that is connected until close, or until the end of try. A program has one at a time. A session that is closed sends
 * nothing: its calls throw NotExecutedException, also while another one is open.
 */
public final class Session implements AutoCloseable {
    /** A request that nobody answers is sent again after about three seconds: what took longer may have been carried out twice. */
    private static final Duration SLOW = Duration.ofMillis(2500);

    private static final AtomicReference<Session> OPEN_ONE = new AtomicReference<>();

    /** The raw layer, without the functions that fill a buffer. */
    public final Functions functions;
    /** The printer's own address; its low byte is sent. */
    public final int device;

    final Questions questions;
    ReceiptCalls begunLast; // of the receipt that the printer has open, if it has one of this session's
    private final byte[] address;

    /** Opens a printer with the address 1 that answers to the virtual printer's names; throws as the other constructor does. */
    public Session(String address) {
        this(address, 1, Questions.USUAL);
    }

    /**
     * Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes. Throws LibraryException when there is no library that fits,
     * IllegalStateException while another session is open, TextException for an address that Windows-1250 cannot hold, and
     * NotExecutedException when no printer answers.
     */
    public Session(String address, int device, Questions questions) {
        this.address = Windows1250.encode(address);
        this.device = device;
        this.questions = questions;
        functions = TelvofmLibrary.load();
        if (!OPEN_ONE.compareAndSet(null, this)) {
            throw new IllegalStateException("A session is open, and a program has one at a time; close it first.");
        }
        try {
            open();
        } catch (CallException failure) {
            OPEN_ONE.set(null);
            throw failure;
        }
    }

    private void open() {
        try {
            call("openFM", () -> functions.openFM(address));
        } catch (CallException failure) {
            functions.closeFM(); // due after a failed open, too
            throw failure;
        }
    }

    /** Whether close has not been called yet; a session whose reopen failed is still open. */
    public boolean isOpen() {
        return OPEN_ONE.get() == this;
    }

    /**
     * Closes the connection and opens it again. The library forgets the settings and pictures of the session. Throws
     * NotExecutedException when the printer does not answer, or when this session is closed: another one's connection is not touched.
     */
    public void reopen() {
        requireOpen("openFM");
        functions.closeFM();
        open();
    }

    /** Closes the connection. Does nothing when it is closed. */
    @Override
    public void close() {
        if (OPEN_ONE.compareAndSet(this, null)) {
            functions.closeFM();
        }
    }

    /**
     * Any function that returns 0 or a code; returns the time that it took:
     * session.call("clearDisplay", () -> session.functions.clearDisplay(session.device, 0, Windows1250.encode(""))). Texts for it are
     * made by Windows1250.encode, names of files by FileNames.encode. Throws RefusedException, NotExecutedException or
     * OutcomeUnknownException when it does not return 0, and IllegalArgumentException, before anything is sent, for a function
     * that fills a buffer.
     */
    public Duration call(String name, IntSupplier function) {
        requireNoBuffer(name);
        requireOpen(name);
        long started = System.nanoTime();
        int code = function.getAsInt();
        Duration taken = Duration.ofNanos(System.nanoTime() - started);
        if (code != 0) {
            throw CallException.of(name, code, taken.compareTo(SLOW) > 0);
        }
        return taken;
    }

    private static void requireNoBuffer(String name) {
        for (Method filling : BufferFunctions.class.getDeclaredMethods()) {
            if (filling.getName().equals(name)) {
                throw new IllegalArgumentException(name + " fills a buffer, and one that is too short ends the process; use its twin for "
                        + "result objects, or the raw layer if it has none.");
            }
        }
    }

    private void requireOpen(String call) {
        if (!isOpen()) {
            throw NotExecutedException.closed(call);
        }
    }

    /**
     * The bytes that a function delivers into a result object, which is handed to it and released whatever happens:
     * session.read("getJournalStructZ_ResultObject", result -> session.functions.getJournalStructZ_ResultObject(session.device, 1, 20, result)).
     * Throws as call does.
     */
    public byte[] read(String name, ToIntFunction<Pointer> function) {
        try (ResultObject result = new ResultObject(functions)) {
            call(name, () -> function.applyAsInt(result.pointer));
            return result.bytes();
        }
    }

    /** Opens the selling day in the printer's mode 0; see the other beginDay. */
    public boolean beginDay() {
        return beginDay(0);
    }

    /**
     * Opens the selling day; the mode is the printer's number. False when the printer refused, as it does when the day is open already.
     * Throws NotExecutedException or OutcomeUnknownException otherwise.
     */
    public boolean beginDay(int saleMode) {
        try {
            call("sellingDayBegin", () -> functions.sellingDayBegin(device, saleMode));
            return true;
        } catch (CallException failure) {
            if (failure.name.equals("refused")) { // late or not: then an earlier try has opened it
                return false;
            }
            throw failure;
        }
    }

    /** The text of a variable of the printer's. Throws RefusedException when it has no such name, and as call does. */
    public String variable(String name) {
        byte[] encoded = Windows1250.encode(name);
        return Windows1250.decode(read("getVariableResultObject", result -> functions.getVariableResultObject(device, encoded, result)));
    }

    /** The text of the last receipt. Throws as call does. */
    public String lastReceipt() {
        return Windows1250.decode(read("getLastParagonResultObject", result -> functions.getLastParagonResultObject(device, result)));
    }

    /** The text of the whole electronic journal, of any length. Throws as call does. */
    public String journal() {
        return Windows1250.decode(read("getJournal_ResultObject", result -> functions.getJournal_ResultObject(device, result)));
    }

    /** A receipt that is not begun yet; sends nothing. */
    public Receipt receipt() {
        return new Receipt(this);
    }

    /**
     * A receipt that a till left when it was switched off: call recover on it. The number of the last receipt before it, and its total,
     * are those that the till kept; it counts as paid in full, unless that total is 0. Throws AmountException.
     */
    public Receipt interruptedReceipt(String numberBefore, BigDecimal total) {
        return Receipt.interrupted(this, numberBefore, total);
    }
}

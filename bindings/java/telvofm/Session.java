package telvofm;

import com.sun.jna.Pointer;
import java.math.BigDecimal;
import java.time.Duration;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.IntSupplier;
import java.util.function.ToIntFunction;

/** A printer that is connected until close, or until the end of try. A program has one at a time. */
public final class Session implements AutoCloseable {
    /** A request that nobody answers is sent again after about three seconds: what took longer may have been carried out twice. */
    private static final Duration SLOW = Duration.ofMillis(2500);

    private static final AtomicReference<Session> OPEN_ONE = new AtomicReference<>();

    /** The raw layer. */
    public final Functions functions;
    /** The printer's own address. */
    public final int device;

    final Questions questions;
    private final byte[] address;

    public Session(String address) {
        this(address, 1, Questions.USUAL);
    }

    /** Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes. */
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

    /** Closes the connection and opens it again. The library forgets the settings and pictures of the session. */
    public void reopen() {
        functions.closeFM();
        open();
    }

    @Override
    public void close() {
        if (OPEN_ONE.compareAndSet(this, null)) {
            functions.closeFM();
        }
    }

    /**
     * Any function that returns 0 or a code; returns the time that it took:
     * session.call("clearDisplay", () -> session.functions.clearDisplay(session.device, 0, Windows1250.encode("")))
     */
    public Duration call(String name, IntSupplier function) {
        long started = System.nanoTime();
        int code = function.getAsInt();
        Duration taken = Duration.ofNanos(System.nanoTime() - started);
        if (code != 0) {
            throw CallException.of(name, code, taken.compareTo(SLOW) > 0);
        }
        return taken;
    }

    /** The bytes that a function delivers into a result object, which is handed to it. */
    public byte[] read(String name, ToIntFunction<Pointer> function) {
        try (ResultObject result = new ResultObject(functions)) {
            call(name, () -> function.applyAsInt(result.pointer));
            return result.bytes();
        }
    }

    /** Opens the selling day. False when the printer refused, as it does when the day is open already. */
    public boolean beginDay() {
        try {
            call("sellingDayBegin", () -> functions.sellingDayBegin(device, 0));
            return true;
        } catch (CallException failure) {
            if (failure.name.equals("refused")) { // late or not: then an earlier try has opened it
                return false;
            }
            throw failure;
        }
    }

    /** The text of a variable of the printer's. */
    public String variable(String name) {
        byte[] encoded = Windows1250.encode(name);
        return Windows1250.decode(read("getVariableResultObject", result -> functions.getVariableResultObject(device, encoded, result)));
    }

    /** The text of the last receipt. */
    public String lastReceipt() {
        return Windows1250.decode(read("getLastParagonResultObject", result -> functions.getLastParagonResultObject(device, result)));
    }

    /** The text of the whole electronic journal. */
    public String journal() {
        return Windows1250.decode(read("getJournal_ResultObject", result -> functions.getJournal_ResultObject(device, result)));
    }

    /** A receipt that is not begun yet. */
    public Receipt receipt() {
        return new Receipt(this);
    }

    /** A receipt that a till left when it was switched off: call recover on it. */
    public Receipt interruptedReceipt(String numberBefore, BigDecimal total) {
        return Receipt.interrupted(this, numberBefore, total);
    }
}

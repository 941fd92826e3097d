package telvofm;

import java.util.Arrays;
import java.util.List;

/** The printer's own names of the variables that a receipt asks for. */
public final class Questions {
    final String lastReceipt;
    final String lastTotal;
    final String state;
    final String closed;
    final String total;
    final String due;

    /** Those of the virtual printer. */
    public static final Questions USUAL = new Questions("LAST_RECEIPT", "LAST_TOTAL", "STATE", "closed", "TOTAL", "DUE");

    /** For a printer that cannot be asked: a receipt asks nothing, and recover wants a person. */
    public static final Questions NONE = new Questions(null, null, null, null, null, null);

    /**
     * `closed` is what `state` is while no receipt is open. Throws IllegalArgumentException when some are missing: with some of the names
     * recovery would take another receipt for its own.
     */
    public Questions(String lastReceipt, String lastTotal, String state, String closed, String total, String due) {
        this.lastReceipt = lastReceipt;
        this.lastTotal = lastTotal;
        this.state = state;
        this.closed = closed;
        this.total = total;
        this.due = due;
        List<String> names = Arrays.asList(lastReceipt, lastTotal, state, closed, total, due);
        if (names.stream().anyMatch(name -> name == null || name.isEmpty()) && names.stream().anyMatch(name -> name != null)) {
            throw new IllegalArgumentException("Some of the printer's names are missing in the questions; give all of them, or Questions.NONE.");
        }
    }
}

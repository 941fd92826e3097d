package telvofm;

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

    /** `closed` is what `state` is while no receipt is open. */
    public Questions(String lastReceipt, String lastTotal, String state, String closed, String total, String due) {
        this.lastReceipt = lastReceipt;
        this.lastTotal = lastTotal;
        this.state = state;
        this.closed = closed;
        this.total = total;
        this.due = due;
    }
}

package telvofm;

import com.sun.jna.Pointer;

/** Bytes of any length, which the library holds until this object is closed. */
final class ResultObject implements AutoCloseable {
    private final Functions functions;
    final Pointer pointer;

    ResultObject(Functions functions) {
        this.functions = functions;
        pointer = functions.createResultObject();
        if (pointer == null) {
            throw new OutOfMemoryError("the library has no memory for a result object");
        }
    }

    byte[] bytes() {
        return functions.getResultObjectString(pointer).getByteArray(0, functions.getResultObjectLength(pointer));
    }

    /** Releases it. To be called once, as try does. */
    @Override
    public void close() {
        functions.destroyResultObject(pointer);
    }
}

using System;
using System.Runtime.InteropServices;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>Bytes of any length that the library fills. Released at the end of `using`, or with the last reference
    /// to it; the bytes are copied out of it.</summary>
    public sealed class ResultObject : SafeHandle
    {
        /// <summary>An empty one. Throws OutOfMemoryException when the library has no memory for it.</summary>
        public ResultObject() : base(IntPtr.Zero, true)
        {
            SetHandle(Functions.createResultObject());
            if (IsInvalid)
            {
                throw new OutOfMemoryException();
            }
        }

        /// <summary>Whether there is none.</summary>
        public override bool IsInvalid
        {
            get { return handle == IntPtr.Zero; }
        }

        /// <summary>For the raw layer's functions whose names end in ResultObject; good until this is released.</summary>
        public IntPtr Pointer
        {
            get { return handle; }
        }

        /// <summary>What it holds, copied; NULs are bytes like others.</summary>
        public byte[] Bytes
        {
            get
            {
                var bytes = new byte[Functions.getResultObjectLength(handle)];
                Marshal.Copy(Functions.getResultObjectString(handle), bytes, 0, bytes.Length);
                GC.KeepAlive(this);
                return bytes;
            }
        }

        /// <summary>What it holds, decoded from Windows-1250.</summary>
        public string Text
        {
            get { return Windows1250.Decode(Bytes); }
        }

        /// <summary>Called once, by the runtime.</summary>
        protected override bool ReleaseHandle()
        {
            Functions.destroyResultObject(handle);
            return true;
        }
    }
}

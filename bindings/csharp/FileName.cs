using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

namespace Telvofm
{
    /// <summary>Names of files, which are the system's matter and not the printer's: in UTF-8 on Linux, in the system's own
    /// code page on Windows.</summary>
    public static class FileName
    {
        /// <summary>The bytes of a name with a NUL behind them, as the raw layer wants it. Throws TextException for a NUL in it, and
        /// for a character that the system's code page lacks.</summary>
        public static byte[] Encode(string name)
        {
            int nul = name.IndexOf('\0');
            if (nul >= 0)
            {
                throw new TextException(name, nul);
            }
            IntPtr encoded = Marshal.StringToHGlobalAnsi(name);
            try
            {
                // The conversion puts something similar in the place of what the code page lacks.
                string read = Marshal.PtrToStringAnsi(encoded);
                for (int position = 0; position < name.Length; position++)
                {
                    if (position >= read.Length || read[position] != name[position])
                    {
                        throw new TextException(name, position, "the system's code page");
                    }
                }
                return BytesAt(encoded);
            }
            finally
            {
                Marshal.FreeHGlobal(encoded);
            }
        }

        static byte[] BytesAt(IntPtr text)
        {
            var bytes = new List<byte>();
            do
            {
                bytes.Add(Marshal.ReadByte(text, bytes.Count));
            }
            while (bytes[bytes.Count - 1] != 0);
            return bytes.ToArray();
        }
    }
}

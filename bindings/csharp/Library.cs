using System;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>Makes sure that the library is there and is the right one, before anything is done with it.</summary>
    static class Library
    {
        const int Version = 106;

        internal static void Require()
        {
            RequireBits(IntPtr.Size * 8);
            int version = Loaded(Functions.getVersion);
            if (version != Version)
            {
                throw new LibraryException("The library that was found has version " + version + " and not " + Version +
                                           "; put the one beside the program that came with these sources.");
            }
        }

        internal static void RequireBits(int bits)
        {
            if (bits != 64)
            {
                throw new LibraryException("TelvoFM is a 64-bit library and this program runs with " + bits +
                                           " bits; build it for x64, or for any processor with \"prefer 32-bit\" off.");
            }
        }

        internal static int Loaded(Func<int> getVersion)
        {
            try
            {
                return getVersion();
            }
            catch (DllNotFoundException missing)
            {
                throw new LibraryException("The library is missing; put telvofm.dll (on Linux libtelvofm.so) beside the program.", missing);
            }
            catch (BadImageFormatException wrong)
            {
                throw new LibraryException("The library that was found is not for this processor; put the 64-bit telvofm.dll beside the program.", wrong);
            }
            catch (EntryPointNotFoundException wrong)
            {
                throw new LibraryException("The library that was found is another one; put the telvofm.dll beside the program that came with these sources.", wrong);
            }
        }
    }
}

#include "formats_ace/support/expected.h"

#include <stdexcept>

namespace archiver::test {

const std::vector<ExpectedArchive>& expectedArchives() {
    static const std::vector<ExpectedArchive> archives = {
        {"tiny-plain.ace",
         {
             {"ace.txt", 8, 8, 0, 0xECA042C7, "013fa4b95ae7f2c8c3cf3cbd3e78ddb312372c5276176e203cadf89aa079e02d"},
         }},
        {"tiny-folder.ace",
         {
             {"t\\", 0, 0, 2, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"t\\t.txt", 2, 2, 0, 0xCDDB4F77, "73475cb40a568e8da8a045ced110137e159f890ac4da883b6b17dc651b3a8049"},
         }},
        {"tiny-nested.ace",
         {
             {"b00\\", 0, 0, 2, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"b00\\ace.txt", 8, 8, 0, 0xECA042C7, "013fa4b95ae7f2c8c3cf3cbd3e78ddb312372c5276176e203cadf89aa079e02d"},
         }},
        {"tiny-nested2.ace",
         {
             {"derp\\", 0, 0, 2, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"derp\\b00\\", 0, 0, 2, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"derp\\b00\\ace.txt", 8, 8, 0, 0xECA042C7,
              "013fa4b95ae7f2c8c3cf3cbd3e78ddb312372c5276176e203cadf89aa079e02d"},
         }},
        {"stored.ace",
         {
             {"docs\\", 0, 0, 0, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
             {"docs\\a.txt", 700, 700, 0, 0x52558D8E,
              "a56278e46a013875794b2d533e0cdc5e793e52b5afa352cd4e0dbedf8ddaf2ff"},
             {"empty.txt", 0, 0, 0, 0xFFFFFFFF, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
         }},
        {"comments.ace",
         {
             {"a.txt", 300, 172, 1, 0xD201A0BA, "778271a47d9bc956942328d0ee069a157b7bc096b973c13733e40343cdd1dcc5"},
         }},
        {"volume.ace",
         {
             {"split.txt", 20000, 4792, 1, 0x5909DA74,
              "cd255d0cfc4d64f64af7afdcc5a343da791e9ec5f507224257c40e248d995b50"},
         }},
        {"blocked-sound-tail.ace",
         {
             {"tail.raw", 8044, 1796, 2, 0xBECD3057,
              "c39fa14f2388d6a98ce14b196a160c85630b3dc21a3b6530cc5547ecdc6546cb"},
             {"again.raw", 11044, 1840, 2, 0x25707995,
              "1c6f4efe594c984c5471d6d708a19bfc8f6f1772d82212ed1d5e681dda5402bb"},
         }},
        {"solid-mixed.ace",
         {
             {"one.txt", 20000, 4792, 2, 0x5909DA74,
              "cd255d0cfc4d64f64af7afdcc5a343da791e9ec5f507224257c40e248d995b50"},
             {"two.txt", 4000, 4000, 0, 0x3141D740, "eb573a8129e5c95189919872c69ea9785b6a74676a02bdc9c6fa46e5a314a276"},
             {"three.txt", 25000, 2880, 1, 0x5558893C,
              "22d056b8a154a2f3570cf2a77db8a4c58b23e21d96d549526adbc4b71d7603e2"},
             {"four.bin", 19788, 7864, 2, 0x28750365,
              "01339a5db819f4b3fbd9966683389459606000ffd5c96d5a2784a97d049b58a6"},
         }},
        {"blocked-delta.ace",
         {
             {"delta.bin", 10500, 2464, 2, 0xE9573BC0,
              "bdb7ca178cccff55c641ef076665248bb867b0c2da3cd31fd937ecc88345b3bb"},
             {"delta2.bin", 13310, 6500, 2, 0xAA787C3E,
              "d8d5cdaad81851528c52d4255434022e1834c5852890f43bc744f6aedc552c25"},
         }},
        {"modes.ace",
         {
             {"exe16.bin", 9108, 4492, 2, 0x65B049F3,
              "b01c84b72cf219244b1025304cd113e14f2bebbae9ccaa652458a090a1b13c09"},
             {"snd16.raw", 2044, 1364, 2, 0xC35CB42C,
              "35bdb10b92c6eb9abcf76c3446435fb012889c1c17eef857091125a3feaae126"},
             {"snd32a.raw", 2044, 1388, 2, 0x43081726,
              "5585f5caa7051b9ca82d2c3308f77d5efe1667c3083a8467b6e0e108792c4108"},
             {"snd32b.raw", 2044, 1672, 2, 0xFF092E39,
              "43b4da27b6188d37c7e6dd787375ce8b4d033bb68f8d918eb00dfcc19eef9aec"},
             {"rgb.raw", 1502, 696, 2, 0x62CBBC94, "31cc9a3814545b9c39c26f726511bd14b8c03eaed77de563fa0793a52a7ef3ca"},
             {"rgba.raw", 1502, 688, 2, 0x0A9E443C, "ea3504fbf21aa106b917964704df5d70600f06bc2fd59a2a7cd5083015665435"},
         }},
    };
    return archives;
}

const ExpectedArchive& expectedArchive(const std::string& file) {
    for (const ExpectedArchive& each : expectedArchives()) {
        if (each.file == file) return each;
    }
    throw std::out_of_range(file);
}

}  // namespace archiver::test

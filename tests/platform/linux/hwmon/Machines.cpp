#include "tests/platform/linux/hwmon/Machines.h"

namespace corvane::machines {

namespace {

constexpr unsigned writable = 0644;

ChipSpec macSmc(std::vector<AttributeSpec> attributes) {
    return {"devices/platform/soc/23e400000.smc/macsmc-hwmon", "macsmc_hwmon", 0, std::move(attributes)};
}

}  // namespace

Machine gigabyteZ170() {
    return {{"devices/platform/it87.2624",
             "it8628",
             0,
             {{"fan1_input", "714\n"},
              {"fan1_min", "10\n", writable},
              {"fan1_alarm", "0\n"},
              {"fan2_input", "557\n"},
              {"fan2_min", "10\n", writable},
              {"fan3_input", "0\n"},
              {"fan3_min", "0\n", writable},
              {"fan4_input", "508\n"},
              {"fan4_min", "0\n", writable},
              {"pwm1", "70\n", writable},
              {"pwm1_freq", "23437\n", writable},
              {"pwm1_auto_point1_temp_hyst", "-3000\n", writable}}}};
}

Machine thinkPadT420() {
    return {{"devices/virtual/thermal/thermal_zone0",
             "acpitz",
             0,
             {{"temp1_input", "49000\n"}, {"temp1_crit", "100000\n"}}},
            {"devices/platform/thinkpad_hwmon",
             "thinkpad",
             1,
             {{"fan1_input", "3855\n"}, {"pwm1", "255\n", writable}, {"pwm1_enable", "2\n", writable}}},
            {"devices/platform/coretemp.0",
             "coretemp",
             2,
             {{"temp1_input", "69000\n"},
              {"temp1_label", "Package id 0\n"},
              {"temp2_input", "59000\n"},
              {"temp2_label", "Core 0\n"},
              {"temp3_input", "67000\n"},
              {"temp3_label", "Core 1\n"}}}};
}

Machine asusX570() {
    return {{"devices/pci0000:00/0000:00:18.3",
             "k10temp",
             0,
             {{"temp1_input", "58100\n"},
              {"temp1_label", "Tctl\n"},
              {"temp2_input", "58000\n"},
              {"temp2_label", "Tccd1\n"}}},
            {"devices/pci0000:00/0000:01:00.0/nvme/nvme0",
             "nvme",
             1,
             {{"temp1_input", "39900\n"}, {"temp1_label", "Composite\n"}, {"temp2_max", "65261800\n"}}},
            {"devices/virtual/ieee80211/phy0", "iwlwifi_1", 2, {{"temp1_input", "33000\n"}}},
            {"devices/platform/asus-ec-sensors",
             "asusec",
             3,
             {{"fan1_input", "1125\n"},
              {"fan1_label", "Chipset\n"},
              {"temp2_input", "48000\n"},
              {"temp2_label", "CPU\n"},
              {"temp4_input", "-40000\n"},
              {"temp4_label", "T_Sensor\n"}}},
            {"devices/pci0000:00/0000:0b:00.0",
             "amdgpu",
             4,
             {{"fan1_input", "791\n"},
              {"fan1_min", "0\n"},
              {"fan1_max", "3500\n"},
              {"pwm1", "56\n", writable},
              {"pwm1_enable", "2\n", writable},
              {"temp1_input", "51000\n"},
              {"temp1_label", "edge\n"},
              {"temp2_input", "54000\n"},
              {"temp2_label", "junction\n"},
              {"temp3_input", "48000\n"},
              {"temp3_label", "mem\n"}}}};
}

Machine macMini() {
    return {macSmc({{"fan1_input", "1700\n"},
                    {"fan1_label", "Fan\n"},
                    {"fan1_min", "1700\n"},
                    {"fan1_max", "4499\n"},
                    {"fan1_target", "1700\n", writable},
                    {"temp1_input", "31218\n"},
                    {"temp1_label", "NAND Flash Temperature\n"},
                    {"temp2_input", "28221\n"},
                    {"temp2_label", "WiFi/BT Module Temp\n"}})};
}

Machine macBookPro16() {
    return {macSmc({{"fan1_input", "0\n"},
                    {"fan1_min", "1499\n"},
                    {"fan1_max", "5348\n"},
                    {"fan1_target", "0\n", writable},
                    {"fan2_input", "0\n"},
                    {"fan2_min", "1499\n"},
                    {"fan2_max", "5776\n"},
                    {"fan2_target", "0\n", writable},
                    {"temp1_input", "27734\n"},
                    {"temp1_label", "NAND Flash Temperature\n"},
                    {"temp2_input", "27399\n"},
                    {"temp2_label", "Battery Hotspot\n"}})};
}

Machine intelMac() {
    return {{"devices/platform/applesmc.768",
             "applesmc",
             2,
             {{"fan1_input", "2010\n"},
              {"fan1_label", "Left side  \n"},
              {"fan1_min", "2000\n", writable},
              {"fan1_max", "6200\n"},
              {"fan1_manual", "0\n", writable},
              {"fan1_output", "2000\n", writable},
              {"temp1_input", "40250\n"},
              {"temp1_label", "TB0T \n"},
              {"temp2_input", "61750\n"},
              {"temp2_label", "TC0P \n"},
              {"temp3_input", "55500\n"},
              {"temp3_label", "TG0D \n"},
              {"temp4_input", "-127000\n"},
              {"temp4_label", "TC0J \n"}},
             true}};
}

Machine nct6775Board() {
    Machine board = {{"devices/platform/nct6775.656",
                      "nct6775",
                      3,
                      {{"temp1_input", "34000\n"},
                       {"temp1_label", "SYSTIN\n"},
                       {"temp4_label", "AUXTIN1\n"},
                       {"temp4_input", "112000\n"}}},
                     {"devices/platform/coretemp.0", "coretemp", 0, {{"temp1_input", "45000\n"}}}};
    for (int fan = 1; fan <= 5; ++fan) {
        const std::string number = std::to_string(fan);
        board[0].attributes.push_back({"fan" + number + "_input", std::to_string(700 + fan * 10) + "\n"});
        board[0].attributes.push_back({"fan" + number + "_min", "0\n", writable});
        board[0].attributes.push_back({"pwm" + number, std::to_string(100 + fan) + "\n", writable});
        board[0].attributes.push_back({"pwm" + number + "_enable", "5\n", writable});
    }
    return board;
}

ChipSpec pwmChip(const std::string& name, int enable, int duty, int rpm) {
    return {"devices/platform/" + name,
            name,
            0,
            {{"fan1_input", std::to_string(rpm) + "\n"},
             {"pwm1", std::to_string(duty) + "\n", writable},
             {"pwm1_enable", std::to_string(enable) + "\n", writable}}};
}

}  // namespace corvane::machines

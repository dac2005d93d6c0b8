// SPDX-License-Identifier: Apache-2.0
// Applies a macro to each of 1 to 64 names. Part of zr_yaml/bind.hpp.
#ifndef ZR_YAML_EACH_HPP
#define ZR_YAML_EACH_HPP

/// @cond

#define ZRYAML_EACH_1(apply, Type, name) apply(Type, name)
#define ZRYAML_EACH_2(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_1(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_3(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_2(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_4(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_3(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_5(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_4(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_6(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_5(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_7(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_6(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_8(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_7(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_9(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_8(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_10(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_9(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_11(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_10(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_12(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_11(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_13(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_12(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_14(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_13(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_15(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_14(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_16(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_15(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_17(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_16(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_18(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_17(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_19(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_18(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_20(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_19(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_21(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_20(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_22(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_21(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_23(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_22(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_24(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_23(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_25(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_24(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_26(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_25(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_27(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_26(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_28(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_27(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_29(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_28(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_30(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_29(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_31(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_30(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_32(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_31(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_33(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_32(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_34(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_33(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_35(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_34(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_36(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_35(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_37(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_36(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_38(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_37(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_39(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_38(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_40(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_39(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_41(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_40(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_42(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_41(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_43(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_42(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_44(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_43(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_45(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_44(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_46(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_45(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_47(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_46(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_48(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_47(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_49(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_48(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_50(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_49(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_51(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_50(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_52(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_51(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_53(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_52(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_54(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_53(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_55(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_54(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_56(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_55(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_57(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_56(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_58(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_57(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_59(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_58(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_60(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_59(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_61(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_60(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_62(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_61(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_63(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_62(apply, Type, __VA_ARGS__)
#define ZRYAML_EACH_64(apply, Type, name, ...) apply(Type, name) ZRYAML_EACH_63(apply, Type, __VA_ARGS__)
#define ZRYAML_PICK(p1, p2, p3, p4, p5, p6, p7, p8, p9, p10, p11, p12, p13, p14, p15, p16, p17, p18, p19, p20, p21, \
                    p22, p23, p24, p25, p26, p27, p28, p29, p30, p31, p32, p33, p34, p35, p36, p37, p38, p39, p40,  \
                    p41, p42, p43, p44, p45, p46, p47, p48, p49, p50, p51, p52, p53, p54, p55, p56, p57, p58, p59,  \
                    p60, p61, p62, p63, p64, picked, ...)                                                           \
    picked
#define ZRYAML_EACH(apply, Type, ...)                                                                           \
    ZRYAML_PICK(__VA_ARGS__, ZRYAML_EACH_64, ZRYAML_EACH_63, ZRYAML_EACH_62, ZRYAML_EACH_61, ZRYAML_EACH_60,    \
                ZRYAML_EACH_59, ZRYAML_EACH_58, ZRYAML_EACH_57, ZRYAML_EACH_56, ZRYAML_EACH_55, ZRYAML_EACH_54, \
                ZRYAML_EACH_53, ZRYAML_EACH_52, ZRYAML_EACH_51, ZRYAML_EACH_50, ZRYAML_EACH_49, ZRYAML_EACH_48, \
                ZRYAML_EACH_47, ZRYAML_EACH_46, ZRYAML_EACH_45, ZRYAML_EACH_44, ZRYAML_EACH_43, ZRYAML_EACH_42, \
                ZRYAML_EACH_41, ZRYAML_EACH_40, ZRYAML_EACH_39, ZRYAML_EACH_38, ZRYAML_EACH_37, ZRYAML_EACH_36, \
                ZRYAML_EACH_35, ZRYAML_EACH_34, ZRYAML_EACH_33, ZRYAML_EACH_32, ZRYAML_EACH_31, ZRYAML_EACH_30, \
                ZRYAML_EACH_29, ZRYAML_EACH_28, ZRYAML_EACH_27, ZRYAML_EACH_26, ZRYAML_EACH_25, ZRYAML_EACH_24, \
                ZRYAML_EACH_23, ZRYAML_EACH_22, ZRYAML_EACH_21, ZRYAML_EACH_20, ZRYAML_EACH_19, ZRYAML_EACH_18, \
                ZRYAML_EACH_17, ZRYAML_EACH_16, ZRYAML_EACH_15, ZRYAML_EACH_14, ZRYAML_EACH_13, ZRYAML_EACH_12, \
                ZRYAML_EACH_11, ZRYAML_EACH_10, ZRYAML_EACH_9, ZRYAML_EACH_8, ZRYAML_EACH_7, ZRYAML_EACH_6,     \
                ZRYAML_EACH_5, ZRYAML_EACH_4, ZRYAML_EACH_3, ZRYAML_EACH_2, ZRYAML_EACH_1, 0)                   \
    (apply, Type, __VA_ARGS__)
/// @endcond

#endif
